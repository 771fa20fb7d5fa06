// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "HAL/CriticalSection.h"
#include "ILiveLinkSource.h"
#include "Templates/SharedPointer.h"

class ILiveLinkClient;

/**
 * A Live Link source for tests: it records every call the client makes, in order, and can be told to refuse a
 * number of shutdown requests before it agrees. Like a real network source, it writes its factory and connection
 * string into its settings, so a preset can create it again.
 */
class LIVELINKTESTSOURCES_API FLiveLinkTestSource : public ILiveLinkSource
{
public:
	explicit FLiveLinkTestSource(const FString& InConnectionString, bool bInUseTestSettings = true);

	virtual void ReceiveClient(ILiveLinkClient* InClient, FGuid InSourceGuid) override;
	virtual void InitializeSettings(ULiveLinkSourceSettings* Settings) override;
	virtual void Update() override;
	virtual bool IsSourceStillValid() const override { return bValid; }
	virtual bool RequestSourceShutdown() override;
	virtual FText GetSourceType() const override;
	virtual FText GetSourceMachineName() const override;
	virtual FText GetSourceStatus() const override;
	virtual TSubclassOf<ULiveLinkSourceSettings> GetSettingsClass() const override;

	/** The calls the client made, in order ("ReceiveClient", "InitializeSettings", "Update", ...). */
	TArray<FString> GetCalls() const;

	/** How many calls of one kind were made. */
	int32 CountCalls(const TCHAR* Call) const;

	/** The next this many shutdown requests are refused. */
	void RefuseShutdownRequests(int32 Count) { ShutdownRefusals = Count; }

	void SetValid(bool bInValid) { bValid = bInValid; }

	ILiveLinkClient* GetClient() const { return Client; }
	const FGuid& GetSourceGuid() const { return SourceGuid; }
	const FString& GetConnectionString() const { return ConnectionString; }
	ULiveLinkSourceSettings* GetReceivedSettings() const { return ReceivedSettings; }

	/** True if InitializeSettings received an object of the test source's own settings class. */
	bool HadSettingsOfTestClass() const { return bHadTestSettings; }

	/** The sources the factory created, newest last; weak, so the client alone decides their lifetime. */
	static TArray<TWeakPtr<FLiveLinkTestSource>> GetCreatedByFactory();
	static void RecordCreatedByFactory(const TSharedPtr<FLiveLinkTestSource>& Source);
	static void ForgetCreatedByFactory();

private:
	void Record(const TCHAR* Call);

	FString ConnectionString;
	bool bUseTestSettings = true;
	bool bValid = true;
	bool bHadTestSettings = false;
	int32 ShutdownRefusals = 0;
	ILiveLinkClient* Client = nullptr;
	FGuid SourceGuid;
	ULiveLinkSourceSettings* ReceivedSettings = nullptr;

	mutable FCriticalSection CallsLock;
	TArray<FString> Calls;
};

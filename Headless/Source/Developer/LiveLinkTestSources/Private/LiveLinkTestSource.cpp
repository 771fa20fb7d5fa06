// Copyright Orvane. All Rights Reserved.

#include "LiveLinkTestSource.h"

#include "LiveLinkTestSourceFactory.h"
#include "LiveLinkTestSourceSettings.h"
#include "Misc/ScopeLock.h"

namespace
{
	FCriticalSection CreatedLock;
	TArray<TWeakPtr<FLiveLinkTestSource>> CreatedSources;
} // namespace

FLiveLinkTestSource::FLiveLinkTestSource(const FString& InConnectionString, bool bInUseTestSettings)
	: ConnectionString(InConnectionString)
	, bUseTestSettings(bInUseTestSettings)
{
}

void FLiveLinkTestSource::ReceiveClient(ILiveLinkClient* InClient, FGuid InSourceGuid)
{
	Record(TEXT("ReceiveClient"));
	Client = InClient;
	SourceGuid = InSourceGuid;
}

void FLiveLinkTestSource::InitializeSettings(ULiveLinkSourceSettings* Settings)
{
	Record(TEXT("InitializeSettings"));
	ReceivedSettings = Settings;
	bHadTestSettings = Settings != nullptr && Settings->IsA(ULiveLinkTestSourceSettings::StaticClass());
	if (Settings != nullptr)
	{
		Settings->Factory = ULiveLinkTestSourceFactory::StaticClass();
		Settings->ConnectionString = ConnectionString;
	}
}

void FLiveLinkTestSource::Update()
{
	Record(TEXT("Update"));
}

bool FLiveLinkTestSource::RequestSourceShutdown()
{
	Record(TEXT("RequestSourceShutdown"));
	if (ShutdownRefusals > 0)
	{
		--ShutdownRefusals;
		return false;
	}
	return true;
}

FText FLiveLinkTestSource::GetSourceType() const
{
	return FText::FromString(TEXT("Test Source"));
}

FText FLiveLinkTestSource::GetSourceMachineName() const
{
	return FText::FromString(ConnectionString);
}

FText FLiveLinkTestSource::GetSourceStatus() const
{
	return FText::FromString(bValid ? TEXT("Active") : TEXT("Not responding"));
}

TSubclassOf<ULiveLinkSourceSettings> FLiveLinkTestSource::GetSettingsClass() const
{
	return bUseTestSettings ? ULiveLinkTestSourceSettings::StaticClass() : ULiveLinkSourceSettings::StaticClass();
}

TArray<FString> FLiveLinkTestSource::GetCalls() const
{
	FScopeLock Lock(&CallsLock);
	return Calls;
}

int32 FLiveLinkTestSource::CountCalls(const TCHAR* Call) const
{
	FScopeLock Lock(&CallsLock);
	int32 Count = 0;
	for (const FString& Recorded : Calls)
	{
		Count += Recorded == Call ? 1 : 0;
	}
	return Count;
}

void FLiveLinkTestSource::Record(const TCHAR* Call)
{
	FScopeLock Lock(&CallsLock);
	Calls.Add(Call);
}

TArray<TWeakPtr<FLiveLinkTestSource>> FLiveLinkTestSource::GetCreatedByFactory()
{
	FScopeLock Lock(&CreatedLock);
	return CreatedSources;
}

void FLiveLinkTestSource::RecordCreatedByFactory(const TSharedPtr<FLiveLinkTestSource>& Source)
{
	FScopeLock Lock(&CreatedLock);
	CreatedSources.Add(Source);
}

void FLiveLinkTestSource::ForgetCreatedByFactory()
{
	FScopeLock Lock(&CreatedLock);
	CreatedSources.Reset();
}

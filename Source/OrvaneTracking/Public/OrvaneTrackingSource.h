// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "ILiveLinkSource.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "OrvaneTrackingCounters.h"
#include "Templates/UniquePtr.h"

#include <atomic>

class FOrvaneTrackingLatencyHistogram;
class FOrvaneTrackingReceiver;
class FOrvaneTrackingSubjects;
struct FOrvaneTrackingSample;
class ILiveLinkClient;

/**
 * The Live Link source of network camera tracking. It listens on one UDP endpoint and turns FreeD D1 and
 * OpenTrackIO datagrams into camera-role subjects, pushed from the receive thread as they arrive.
 *
 * The socket is bound in Update(), retried while the port is busy, and closed in RequestSourceShutdown(),
 * which never waits: a source that replaces another on the same port gets the port within a frame or two.
 */
class ORVANETRACKING_API FOrvaneTrackingSource : public ILiveLinkSource
{
public:
	/** The text shown as the source's type, also stored in presets. */
	static const TCHAR* SourceTypeText;

	/** Attempts, one per update, made at once after a bind failed, before waiting BindRetrySeconds between attempts. */
	static constexpr int32 QuickBindRetries = 3;

	/** Seconds between two attempts to bind a port that stays busy. */
	static constexpr double BindRetrySeconds = 0.25;

	/** Seconds a port must stay busy before the failure to bind it is logged. */
	static constexpr double PersistentBindFailureSeconds = 1.0;

	/** Seconds without a datagram after which the status says that nothing arrives. */
	static constexpr double SilenceSeconds = 0.25;

	/** EndpointText is kept as the connection string; Endpoint is its parsed form. */
	FOrvaneTrackingSource(const FString& InEndpointText, const FIPv4Endpoint& InEndpoint);
	virtual ~FOrvaneTrackingSource() override;

	//~ Begin ILiveLinkSource interface
	virtual void ReceiveClient(ILiveLinkClient* InClient, FGuid InSourceGuid) override;
	virtual void InitializeSettings(ULiveLinkSourceSettings* Settings) override;
	virtual void OnSettingsChanged(
		ULiveLinkSourceSettings* Settings, const FPropertyChangedEvent& PropertyChangedEvent) override;
	virtual void Update() override;
	virtual bool IsSourceStillValid() const override;
	virtual bool RequestSourceShutdown() override;
	virtual FText GetSourceType() const override;
	virtual FText GetSourceMachineName() const override;
	virtual FText GetSourceStatus() const override;
	virtual TSubclassOf<ULiveLinkSourceSettings> GetSettingsClass() const override;
	//~ End ILiveLinkSource interface

	/**
	 * The subject name of a camera stream: "FreeD <camera id>" or "OpenTrackIO <source number>". It depends on
	 * nothing else, so a camera bound to "FreeD 1" finds its subject again after a restart.
	 */
	static FName MakeSubjectName(const FOrvaneTrackingSample& Sample);

	/** The endpoint text this source listens on, as given. */
	const FString& GetEndpointText() const { return EndpointText; }

	/** True while the socket is bound and datagrams are read. */
	bool IsReceiving() const;

	/** Counters of the current socket (zero before the first bind). */
	FOrvaneTrackingCounters GetCounters() const;

	/** Time from receipt to push of the current socket's datagrams; null before the first bind. */
	const FOrvaneTrackingLatencyHistogram* GetLatency() const;

private:
	/** Binds the socket and starts receiving; on failure schedules the next attempt. */
	void TryStartReceiver(double Now);

	/** Drops a receiver whose thread left on its own (socket error), so the next Update binds again. */
	void ReapFailedReceiver(double Now);

	/** Recomputes the status text from the counters, at most a few times a second. */
	void RefreshStatus(double Now);

	/** Applies the settings that the receive thread reads. */
	void ApplySettings(const ULiveLinkSourceSettings* Settings);

	const FString EndpointText;
	const FIPv4Endpoint Endpoint;

	ILiveLinkClient* Client = nullptr;
	FGuid SourceGuid;

	/** Receive-thread state that turns samples into Live Link subjects. */
	TSharedPtr<FOrvaneTrackingSubjects> Subjects;
	TUniquePtr<FOrvaneTrackingReceiver> Receiver;

	bool bShutdownRequested = false;
	double NextBindSeconds = 0.0;
	FString BindError;
	double FirstBindFailureSeconds = 0.0;
	int32 ConsecutiveBindFailures = 0;
	bool bBindFailureLogged = false;

	double RateWindowStartSeconds = 0.0;
	uint64 RateWindowStartSamples = 0;
	double SampleRate = 0.0;
	FText StatusText;
};

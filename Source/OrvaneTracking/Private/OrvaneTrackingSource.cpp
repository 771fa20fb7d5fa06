// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingSource.h"

#include "Decoding/OrvaneTrackingSample.h"
#include "HAL/PlatformTime.h"
#include "ILiveLinkClient.h"
#include "OrvaneTrackingLog.h"
#include "OrvaneTrackingReceiver.h"
#include "OrvaneTrackingSourceFactory.h"
#include "OrvaneTrackingSourceSettings.h"
#include "OrvaneTrackingSubjects.h"

#define LOCTEXT_NAMESPACE "OrvaneTrackingSource"

namespace OrvaneTrackingSource
{
	/** Seconds between two refreshes of the status text. */
	constexpr double StatusRefreshSeconds = 0.25;

	/** Seconds over which the sample rate is measured. */
	constexpr double RateWindowSeconds = 1.0;
} // namespace OrvaneTrackingSource

const TCHAR* FOrvaneTrackingSource::SourceTypeText = TEXT("Orvane Tracking");

FName FOrvaneTrackingSource::MakeSubjectName(const FOrvaneTrackingSample& Sample)
{
	const TCHAR* Prefix = Sample.Protocol == EOrvaneTrackingProtocol::FreeD ? TEXT("FreeD") : TEXT("OpenTrackIO");
	return FName(*FString::Printf(TEXT("%s %u"), Prefix, Sample.SourceNumber));
}

FOrvaneTrackingSource::FOrvaneTrackingSource(const FString& InEndpointText, const FIPv4Endpoint& InEndpoint)
	: EndpointText(InEndpointText)
	, Endpoint(InEndpoint)
	, StatusText(LOCTEXT("NotStarted", "Not started"))
{
}

FOrvaneTrackingSource::~FOrvaneTrackingSource()
{
	// The client polls RequestSourceShutdown until it returns true; this only covers a source dropped without.
	Receiver.Reset();
}

void FOrvaneTrackingSource::ReceiveClient(ILiveLinkClient* InClient, FGuid InSourceGuid)
{
	Client = InClient;
	SourceGuid = InSourceGuid;
	if (Client)
	{
		Subjects = MakeShared<FOrvaneTrackingSubjects>(*Client, SourceGuid);
	}
}

void FOrvaneTrackingSource::InitializeSettings(ULiveLinkSourceSettings* Settings)
{
	if (!Settings)
	{
		return;
	}
	// What a preset needs to build this source again.
	Settings->ConnectionString = EndpointText;
	Settings->Factory = UOrvaneTrackingSourceFactory::StaticClass();
	ApplySettings(Settings);
}

void FOrvaneTrackingSource::OnSettingsChanged(
	ULiveLinkSourceSettings* Settings, const FPropertyChangedEvent& PropertyChangedEvent)
{
	ApplySettings(Settings);
}

void FOrvaneTrackingSource::ApplySettings(const ULiveLinkSourceSettings* Settings)
{
	// A preset written by another version may carry the base class; then the defaults apply.
	const UOrvaneTrackingSourceSettings* TrackingSettings = Cast<UOrvaneTrackingSourceSettings>(Settings);
	if (TrackingSettings && Subjects)
	{
		Subjects->SetFreeDLensEncoding(TrackingSettings->FreeDLensEncoding);
	}
}

void FOrvaneTrackingSource::Update()
{
	if (bShutdownRequested || !Subjects)
	{
		return;
	}
	const double Now = FPlatformTime::Seconds();
	ReapFailedReceiver(Now);
	if (!Receiver && Now >= NextBindSeconds)
	{
		TryStartReceiver(Now);
	}
	RefreshStatus(Now);
}

void FOrvaneTrackingSource::TryStartReceiver(double Now)
{
	TSharedPtr<FOrvaneTrackingSubjects> SubjectsForThread = Subjects;
	TUniquePtr<FOrvaneTrackingReceiver> NewReceiver = MakeUnique<FOrvaneTrackingReceiver>(Endpoint,
		[SubjectsForThread](const FOrvaneTrackingSample& Sample, double ReceiptSeconds)
		{
			SubjectsForThread->Push(Sample, ReceiptSeconds);
		});

	FString Error;
	if (!NewReceiver->Start(Error))
	{
		if (BindError.IsEmpty())
		{
			FirstBindFailureSeconds = Now;
			ConsecutiveBindFailures = 0;
		}
		BindError = Error;
		// The source this one replaces usually lets go of the port later in the same client tick: try again on
		// the next few ticks before settling into the slower rhythm.
		++ConsecutiveBindFailures;
		NextBindSeconds = ConsecutiveBindFailures <= QuickBindRetries ? Now : Now + BindRetrySeconds;
		// A port held for a moment is the normal hand-over from the source this one replaces; only a port
		// that stays taken is worth a warning.
		if (!bBindFailureLogged && Now - FirstBindFailureSeconds >= PersistentBindFailureSeconds)
		{
			UE_LOG(LogOrvaneTracking, Warning, TEXT("%s; the tracking source keeps retrying every %.2f s."), *Error,
				BindRetrySeconds);
			bBindFailureLogged = true;
		}
		return;
	}

	if (bBindFailureLogged)
	{
		UE_LOG(LogOrvaneTracking, Log, TEXT("Tracking source now listens on %s."), *EndpointText);
	}
	BindError.Reset();
	bBindFailureLogged = false;
	Receiver = MoveTemp(NewReceiver);
	RateWindowStartSeconds = Now;
	RateWindowStartSamples = 0;
	SampleRate = 0.0;
}

void FOrvaneTrackingSource::ReapFailedReceiver(double Now)
{
	if (Receiver && Receiver->IsStopped())
	{
		BindError = Receiver->GetLastError();
		UE_LOG(LogOrvaneTracking, Warning, TEXT("Tracking source on %s stopped receiving (%s); listening again."),
			*EndpointText, *BindError);
		Receiver.Reset();
		// The socket failure is already reported; a new bind failure streak starts from here.
		FirstBindFailureSeconds = Now;
		ConsecutiveBindFailures = 0;
		bBindFailureLogged = false;
		NextBindSeconds = Now + BindRetrySeconds;
	}
}

void FOrvaneTrackingSource::RefreshStatus(double Now)
{
	if (!Receiver)
	{
		StatusText = BindError.IsEmpty() ? LOCTEXT("Starting", "Starting")
										 : FText::FromString(FString::Printf(TEXT("%s, retrying"), *BindError));
		return;
	}

	const FOrvaneTrackingCounters Counters = Receiver->GetCounters();
	if (Now - RateWindowStartSeconds >= OrvaneTrackingSource::RateWindowSeconds)
	{
		SampleRate = static_cast<double>(Counters.Samples - RateWindowStartSamples) / (Now - RateWindowStartSeconds);
		RateWindowStartSeconds = Now;
		RateWindowStartSamples = Counters.Samples;
	}

	const double LastReceipt = Receiver->GetLastReceiptSeconds();
	FString Status =
		LastReceipt <= 0.0 || Now - LastReceipt > SilenceSeconds
			? FString::Printf(TEXT("Waiting for data on %s"), *EndpointText)
			: FString::Printf(TEXT("Receiving %.0f Hz, loss %.1f%%"), SampleRate, Counters.GetLossPercent());
	const uint64 Rejected = Counters.GetTotalRejected();
	if (Rejected > 0)
	{
		Status += FString::Printf(TEXT(", %llu rejected, last error: %s"), Rejected, *Receiver->GetLastError());
	}
	StatusText = FText::FromString(Status);
}

bool FOrvaneTrackingSource::IsSourceStillValid() const
{
	return Receiver && Receiver->IsReceiving();
}

bool FOrvaneTrackingSource::RequestSourceShutdown()
{
	bShutdownRequested = true;
	if (!Receiver)
	{
		return true;
	}
	// Closes the socket now, so a source that replaces this one can bind the port while this thread winds down.
	Receiver->RequestStop();
	if (!Receiver->IsStopped())
	{
		return false;
	}
	Receiver.Reset();
	return true;
}

FText FOrvaneTrackingSource::GetSourceType() const
{
	return FText::FromString(SourceTypeText);
}

FText FOrvaneTrackingSource::GetSourceMachineName() const
{
	return FText::FromString(EndpointText);
}

FText FOrvaneTrackingSource::GetSourceStatus() const
{
	return StatusText;
}

TSubclassOf<ULiveLinkSourceSettings> FOrvaneTrackingSource::GetSettingsClass() const
{
	return UOrvaneTrackingSourceSettings::StaticClass();
}

bool FOrvaneTrackingSource::IsReceiving() const
{
	return Receiver && Receiver->IsReceiving();
}

FOrvaneTrackingCounters FOrvaneTrackingSource::GetCounters() const
{
	return Receiver ? Receiver->GetCounters() : FOrvaneTrackingCounters();
}

const FOrvaneTrackingLatencyHistogram* FOrvaneTrackingSource::GetLatency() const
{
	return Receiver ? &Receiver->GetLatency() : nullptr;
}

#undef LOCTEXT_NAMESPACE

// Copyright Orvane. All Rights Reserved.

#include "MonitorCommand.h"

#include "Dom/JsonObject.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTime.h"
#include "OrvaneTrackingEndpoint.h"
#include "OrvaneTrackingReceiver.h"
#include "Policies/CondensedJsonPrintPolicy.h"
#include "ProgramOutput.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"
#include "TrackingMonitor.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace MonitorCommand
{
	std::atomic<bool> bInterrupted{false};

	void OnInterrupt(int)
	{
		bInterrupted = true;
	}

	struct FOptions
	{
		FString EndpointText;
		FIPv4Endpoint Endpoint;
		double DurationSeconds = 0.0;
		bool bJson = false;
	};

	bool ParseOptions(const TArray<FString>& Args, FOptions& OutOptions, FString& OutError)
	{
		for (int32 Index = 0; Index < Args.Num(); ++Index)
		{
			const FString& Arg = Args[Index];
			if (Arg == TEXT("--json"))
			{
				OutOptions.bJson = true;
			}
			else if (Arg == TEXT("--duration"))
			{
				if (Index + 1 >= Args.Num() || !Args[Index + 1].IsNumeric() || FCString::Atod(*Args[Index + 1]) <= 0.0)
				{
					OutError = TEXT("--duration needs a number of seconds greater than 0.");
					return false;
				}
				OutOptions.DurationSeconds = FCString::Atod(*Args[++Index]);
			}
			else if (Arg.StartsWith(TEXT("--")))
			{
				OutError = FString::Printf(TEXT("Unknown option '%s'."), *Arg);
				return false;
			}
			else if (OutOptions.EndpointText.IsEmpty())
			{
				OutOptions.EndpointText = Arg;
			}
			else
			{
				OutError = FString::Printf(TEXT("Unexpected argument '%s'."), *Arg);
				return false;
			}
		}
		if (OutOptions.EndpointText.IsEmpty())
		{
			OutError = TEXT("Usage: orvane monitor ENDPOINT [--duration SECONDS] [--json]");
			return false;
		}
		return FOrvaneTrackingEndpoint::Parse(OutOptions.EndpointText, OutOptions.Endpoint, OutError);
	}

	FString FormatOptional(const TOptional<float>& Value, const TCHAR* Format)
	{
		return Value.IsSet() ? FString::Printf(Format, Value.GetValue()) : FString(TEXT("-"));
	}

	FString FormatTimecode(const FOrvaneTrackingSample& Sample)
	{
		if (!Sample.Timecode.IsSet())
		{
			return TEXT("-");
		}
		const FOrvaneTrackingTimecode& Timecode = Sample.Timecode.GetValue();
		return FString::Printf(TEXT("%02d:%02d:%02d%s%02d"), Timecode.Hours, Timecode.Minutes, Timecode.Seconds,
			Timecode.bDropFrame ? TEXT(";") : TEXT(":"), Timecode.Frames);
	}

	FString FormatRejections(const FOrvaneTrackingCounters& Counters)
	{
		FString Text;
		for (int32 Index = 0; Index < FOrvaneTrackingCounters::NumRejections; ++Index)
		{
			if (Counters.Rejected[Index] > 0)
			{
				Text += FString::Printf(TEXT("%s%s %llu"), Text.IsEmpty() ? TEXT("") : TEXT(", "),
					FOrvaneTrackingCounters::Describe(static_cast<EOrvaneDatagramRejection>(Index)),
					Counters.Rejected[Index]);
			}
		}
		return Text.IsEmpty() ? FString(TEXT("none")) : Text;
	}

	FString FormatTable(const FOptions& Options, double Elapsed, const FOrvaneTrackingCounters& Counters,
		const TArray<FTrackingMonitorSubject>& Subjects, const FString& Status)
	{
		FString Text =
			FString::Printf(TEXT("orvane monitor %s  %.1f s  %s\n"), *Options.EndpointText, Elapsed, *Status);
		Text += FString::Printf(TEXT("datagrams %llu  accepted %llu  samples %llu  loss %.2f%% (%llu sequence gaps)\n"),
			Counters.Received, Counters.Accepted, Counters.Samples, Counters.GetLossPercent(), Counters.SequenceGaps);
		Text +=
			FString::Printf(TEXT("rejected %llu: %s\n\n"), Counters.GetTotalRejected(), *FormatRejections(Counters));
		Text += TEXT("Subject           Rate Hz  Jitter ms   X cm       Y cm       Z cm      Pitch    Yaw      Roll    "
					 "Focal mm  f-stop  Focus cm   Timecode\n");
		for (const FTrackingMonitorSubject& Subject : Subjects)
		{
			const FOrvaneTrackingSample& Last = Subject.Last;
			const FVector Location = Last.Transform.GetLocation();
			const FRotator Rotation = Last.Transform.Rotator();
			Text +=
				FString::Printf(TEXT("%-16s %8.1f %10.3f %10.2f %10.2f %10.2f %8.2f %8.2f %8.2f %9s %7s %10s  %s\n"),
					*Subject.Name, Subject.RateHz, Subject.JitterMs, Location.X, Location.Y, Location.Z, Rotation.Pitch,
					Rotation.Yaw, Rotation.Roll, *FormatOptional(Last.FocalLength, TEXT("%.2f")),
					*FormatOptional(Last.Aperture, TEXT("%.2f")), *FormatOptional(Last.FocusDistance, TEXT("%.1f")),
					*FormatTimecode(Last));
		}
		if (Subjects.Num() == 0)
		{
			Text += TEXT("(no camera yet)\n");
		}
		return Text;
	}

	TSharedRef<FJsonObject> MakeJsonReport(double Elapsed, const FOrvaneTrackingCounters& Counters,
		const TArray<FTrackingMonitorSubject>& Subjects, const FString& Status)
	{
		TSharedRef<FJsonObject> Report = MakeShared<FJsonObject>();
		Report->SetNumberField(TEXT("time_s"), Elapsed);
		Report->SetStringField(TEXT("status"), Status);
		Report->SetNumberField(TEXT("datagrams"), static_cast<double>(Counters.Received));
		Report->SetNumberField(TEXT("accepted"), static_cast<double>(Counters.Accepted));
		Report->SetNumberField(TEXT("samples"), static_cast<double>(Counters.Samples));
		Report->SetNumberField(TEXT("sequence_gaps"), static_cast<double>(Counters.SequenceGaps));
		Report->SetNumberField(TEXT("loss_percent"), Counters.GetLossPercent());

		TSharedRef<FJsonObject> Rejected = MakeShared<FJsonObject>();
		for (int32 Index = 0; Index < FOrvaneTrackingCounters::NumRejections; ++Index)
		{
			Rejected->SetNumberField(LexToString(static_cast<EOrvaneDatagramRejection>(Index)),
				static_cast<double>(Counters.Rejected[Index]));
		}
		Report->SetObjectField(TEXT("rejected"), Rejected);

		TArray<TSharedPtr<FJsonValue>> SubjectValues;
		for (const FTrackingMonitorSubject& Subject : Subjects)
		{
			const FOrvaneTrackingSample& Last = Subject.Last;
			TSharedRef<FJsonObject> Value = MakeShared<FJsonObject>();
			Value->SetStringField(TEXT("name"), Subject.Name);
			Value->SetNumberField(TEXT("rate_hz"), Subject.RateHz);
			Value->SetNumberField(TEXT("jitter_ms"), Subject.JitterMs);
			Value->SetNumberField(TEXT("samples"), static_cast<double>(Subject.TotalSamples));
			const FVector Location = Last.Transform.GetLocation();
			const FRotator Rotation = Last.Transform.Rotator();
			Value->SetArrayField(TEXT("location_cm"),
				{MakeShared<FJsonValueNumber>(Location.X), MakeShared<FJsonValueNumber>(Location.Y),
					MakeShared<FJsonValueNumber>(Location.Z)});
			Value->SetArrayField(TEXT("rotation_pitch_yaw_roll_deg"),
				{MakeShared<FJsonValueNumber>(Rotation.Pitch), MakeShared<FJsonValueNumber>(Rotation.Yaw),
					MakeShared<FJsonValueNumber>(Rotation.Roll)});
			if (Last.FocalLength.IsSet())
			{
				Value->SetNumberField(TEXT("focal_length_mm"), Last.FocalLength.GetValue());
			}
			if (Last.Aperture.IsSet())
			{
				Value->SetNumberField(TEXT("aperture_fstop"), Last.Aperture.GetValue());
			}
			if (Last.FocusDistance.IsSet())
			{
				Value->SetNumberField(TEXT("focus_distance_cm"), Last.FocusDistance.GetValue());
			}
			if (Last.Timecode.IsSet())
			{
				Value->SetStringField(TEXT("timecode"), FormatTimecode(Last));
			}
			SubjectValues.Add(MakeShared<FJsonValueObject>(Value));
		}
		Report->SetArrayField(TEXT("subjects"), SubjectValues);
		return Report;
	}

	FString ToJsonLine(const TSharedRef<FJsonObject>& Object)
	{
		FString Line;
		TSharedRef<TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>> Writer =
			TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>::Create(&Line);
		FJsonSerializer::Serialize(Object, Writer);
		return Line;
	}
} // namespace MonitorCommand

int32 RunMonitorCommand(const TArray<FString>& Args)
{
	using namespace MonitorCommand;

	FOptions Options;
	FString Error;
	if (!ParseOptions(Args, Options, Error))
	{
		ProgramOutput::Error(Error);
		return 2;
	}

	FTrackingMonitor Monitor;
	FOrvaneTrackingReceiver Receiver(Options.Endpoint,
		[&Monitor](const FOrvaneTrackingSample& Sample, double ReceiptSeconds)
		{
			Monitor.AddSample(Sample, ReceiptSeconds);
		});
	if (!Receiver.Start(Error))
	{
		ProgramOutput::Error(FString::Printf(TEXT("%s."), *Error));
		return 1;
	}

	bInterrupted = false;
	std::signal(SIGINT, &OnInterrupt);
	std::signal(SIGTERM, &OnInterrupt);
	const bool bLive = !Options.bJson && isatty(STDOUT_FILENO);
	const double ReportSeconds = bLive ? 0.25 : 1.0;
	const double StartSeconds = FPlatformTime::Seconds();
	Monitor.TakeReport(StartSeconds);
	double NextReportSeconds = StartSeconds + ReportSeconds;
	bool bFinished = false;
	while (!bFinished)
	{
		FPlatformProcess::Sleep(static_cast<float>(FMath::Max(0.0, NextReportSeconds - FPlatformTime::Seconds())));
		const double Now = FPlatformTime::Seconds();
		const double Elapsed = Now - StartSeconds;
		bFinished = bInterrupted || (Options.DurationSeconds > 0.0 && Elapsed >= Options.DurationSeconds);
		NextReportSeconds += ReportSeconds;

		const FOrvaneTrackingCounters Counters = Receiver.GetCounters();
		const TArray<FTrackingMonitorSubject> Subjects = Monitor.TakeReport(Now);
		const FString LastError = Receiver.GetLastError();
		const FString Status =
			LastError.IsEmpty() ? FString(TEXT("listening")) : FString::Printf(TEXT("last error: %s"), *LastError);
		if (Options.bJson)
		{
			ProgramOutput::Line(ToJsonLine(MakeJsonReport(Elapsed, Counters, Subjects, Status)));
		}
		else
		{
			// On a terminal the table is redrawn in place; in a pipe each report follows the last.
			ProgramOutput::Line(FString(bLive ? TEXT("\x1b[H\x1b[2J") : TEXT("")) +
								FormatTable(Options, Elapsed, Counters, Subjects, Status));
		}
	}

	Receiver.RequestStop();
	while (!Receiver.IsStopped())
	{
		FPlatformProcess::Sleep(0.01f);
	}
	std::signal(SIGINT, SIG_DFL);
	std::signal(SIGTERM, SIG_DFL);
	return 0;
}

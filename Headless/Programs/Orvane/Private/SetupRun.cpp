// Copyright Orvane. All Rights Reserved.

#include "SetupRun.h"

#include "CoreGlobals.h"
#include "HeadlessSettingsEditor.h"
#include "LaunchEngineLoop.h"
#include "Misc/App.h"
#include "OrvaneCameraManager.h"

#include <cmath>

namespace
{
	/** The longest run accepted, in application seconds; more would only be a typo. */
	constexpr double MaxAdvanceSeconds = 3600.0;

	/** Takes the value after the option at Index, or explains what is missing. */
	bool TakeValue(TArray<FString>& InOutArgs, int32 Index, const TCHAR* What, FString& OutValue, FString& OutError)
	{
		const FString& Option = InOutArgs[Index];
		if (Index + 1 >= InOutArgs.Num() || InOutArgs[Index + 1].StartsWith(TEXT("--")))
		{
			OutError = FString::Printf(TEXT("%s needs %s."), *Option, What);
			return false;
		}
		OutValue = InOutArgs[Index + 1];
		InOutArgs.RemoveAt(Index, 2);
		return true;
	}

	/** Text as a C++ string literal, so the reported call reads like the code that was run. */
	FString Quote(const FString& Text)
	{
		FString Quoted = TEXT("\"");
		for (const TCHAR Char : Text)
		{
			if (Char == TEXT('"') || Char == TEXT('\\'))
			{
				Quoted.AppendChar(TEXT('\\'));
			}
			Quoted.AppendChar(Char);
		}
		Quoted.AppendChar(TEXT('"'));
		return Quoted;
	}
} // namespace

bool FSetupRunOptions::Parse(TArray<FString>& InOutArgs, FString& OutError)
{
	TArray<FString> CompleteOnlyOptions;
	TArray<FString> SetupOnlyOptions;
	int32 AlphaChoices = 0;
	for (int32 Index = 0; Index < InOutArgs.Num();)
	{
		const FString Option = InOutArgs[Index];
		FString Value;
		if (Option == TEXT("--setup"))
		{
			if (!TakeValue(InOutArgs, Index, TEXT("'complete' or 'camera-only'"), Value, OutError))
			{
				return false;
			}
			if (Value == TEXT("complete"))
			{
				Mode = ESetupMode::Complete;
			}
			else if (Value == TEXT("camera-only"))
			{
				Mode = ESetupMode::CameraOnly;
			}
			else
			{
				OutError = FString::Printf(TEXT("--setup takes 'complete' or 'camera-only', not '%s'."), *Value);
				return false;
			}
		}
		else if (Option == TEXT("--endpoint"))
		{
			if (!TakeValue(InOutArgs, Index, TEXT("an endpoint (A.B.C.D:PORT)"), Endpoint, OutError))
			{
				return false;
			}
			CompleteOnlyOptions.AddUnique(Option);
		}
		else if (Option == TEXT("--preset"))
		{
			if (!TakeValue(InOutArgs, Index, TEXT("a preset name"), PresetName, OutError))
			{
				return false;
			}
			CompleteOnlyOptions.AddUnique(Option);
		}
		else if (Option == TEXT("--render-alpha") || Option == TEXT("--no-render-alpha"))
		{
			const bool bChoice = Option == TEXT("--render-alpha");
			if (AlphaChoices > 0 && bChoice != bRenderAlpha)
			{
				OutError = TEXT("--render-alpha and --no-render-alpha cannot be given together.");
				return false;
			}
			bRenderAlpha = bChoice;
			++AlphaChoices;
			CompleteOnlyOptions.AddUnique(Option);
			InOutArgs.RemoveAt(Index);
		}
		else if (Option == TEXT("--advance"))
		{
			if (!TakeValue(InOutArgs, Index, TEXT("a number of seconds"), Value, OutError))
			{
				return false;
			}
			double Seconds = 0.0;
			if (!LexTryParseString(Seconds, *Value) || !std::isfinite(Seconds) || Seconds < 0.0 ||
				Seconds > MaxAdvanceSeconds)
			{
				OutError = FString::Printf(
					TEXT("--advance takes seconds from 0 to %.0f, not '%s'."), MaxAdvanceSeconds, *Value);
				return false;
			}
			AdvanceSeconds = Seconds;
			SetupOnlyOptions.AddUnique(Option);
		}
		else
		{
			++Index;
		}
	}

	if (Mode == ESetupMode::None && (CompleteOnlyOptions.Num() > 0 || SetupOnlyOptions.Num() > 0))
	{
		const FString& First = CompleteOnlyOptions.Num() > 0 ? CompleteOnlyOptions[0] : SetupOnlyOptions[0];
		OutError = FString::Printf(TEXT("%s needs --setup complete%s."), *First,
			CompleteOnlyOptions.Num() > 0 ? TEXT("") : TEXT(" or --setup camera-only"));
		return false;
	}
	if (Mode == ESetupMode::CameraOnly && CompleteOnlyOptions.Num() > 0)
	{
		OutError = FString::Printf(TEXT("%s applies to --setup complete only; the camera-only setup takes no "
										"endpoint, preset or alpha choice."),
			*CompleteOnlyOptions[0]);
		return false;
	}
	// The dialog hands on its text boxes trimmed.
	Endpoint.TrimStartAndEndInline();
	PresetName.TrimStartAndEndInline();
	return true;
}

FSetupRunResult RunSetup(const FSetupRunOptions& Options)
{
	check(GEngine && Options.Mode != ESetupMode::None);
	FSetupRunResult Result;

	FApp::SetUseFixedTimeStep(true);
	FApp::SetFixedDeltaTime(SetupFrameSeconds);
	const double StartTime = FApp::GetCurrentTime();
	const int32 EarlierScreenMessages = GEngine->GetRecordedOnScreenDebugMessages().Num();
	const int32 EarlierRestartRequests = UE::SettingsEditor::Headless::GetApplicationRestartRequestCount();

	// A message is stamped with the application time of the frame it appeared in: the recorded messages are
	// looked at after the call and after each frame.
	int32 SeenScreenMessages = EarlierScreenMessages;
	auto CollectScreenMessages = [&Result, &SeenScreenMessages, StartTime]()
	{
		const TArray<FOnScreenDebugMessageRecord>& Recorded = GEngine->GetRecordedOnScreenDebugMessages();
		for (; SeenScreenMessages < Recorded.Num(); ++SeenScreenMessages)
		{
			Result.ScreenMessages.Add(Recorded[SeenScreenMessages]);
			Result.ScreenMessageTimes.Add(FApp::GetCurrentTime() - StartTime);
		}
	};

	{
		FLogCapture Capture;
		if (Options.Mode == ESetupMode::Complete)
		{
			Result.Call = FString::Printf(TEXT("CreateCompleteSetup(%s, %s, %s)"), *Quote(Options.Endpoint),
				*Quote(Options.PresetName), Options.bRenderAlpha ? TEXT("true") : TEXT("false"));
			Result.bSucceeded =
				FOrvaneCameraManager::CreateCompleteSetup(Options.Endpoint, Options.PresetName, Options.bRenderAlpha);
		}
		else
		{
			Result.Call = TEXT("CreateOrvaneCameraOnly()");
			Result.bSucceeded = FOrvaneCameraManager::CreateOrvaneCameraOnly();
		}

		// Whole frames only: a run never stops short of the time asked for.
		const int32 Frames = (int32)std::ceil(Options.AdvanceSeconds / SetupFrameSeconds - 1e-9);
		CollectScreenMessages();
		for (int32 Frame = 0; Frame < Frames && GEngine; ++Frame)
		{
			GEngineLoop.Tick();
			CollectScreenMessages();
		}
		Result.FramesTicked = Frames;
		Result.SecondsAdvanced = FApp::GetCurrentTime() - StartTime;
		Result.LogLines = Capture.GetLines();
	}

	Result.ShownMessages = GEngine->PriorityScreenMessages;
	for (const TPair<int32, FScreenMessageString>& Keyed : GEngine->ScreenMessages)
	{
		Result.ShownMessages.Add(Keyed.Value);
	}

	const TArray<double> RestartTimes = UE::SettingsEditor::Headless::GetApplicationRestartRequestTimes();
	for (int32 Index = EarlierRestartRequests; Index < RestartTimes.Num(); ++Index)
	{
		Result.RestartRequestTimes.Add(RestartTimes[Index] - StartTime);
	}
	return Result;
}

// Copyright Orvane. All Rights Reserved.

#include "SetupReport.h"

#include "Camera/CameraActor.h"
#include "Camera/CameraComponent.h"
#include "ConfigSnapshot.h"
#include "Containers/StringConv.h"
#include "Editor.h"
#include "Engine/World.h"
#include "EngineUtils.h"
#include "Features/IModularFeatures.h"
#include "GameFramework/Actor.h"
#include "ILiveLinkClient.h"
#include "LiveLinkSourceFactory.h"
#include "LiveLinkSourceSettings.h"
#include "OrvaneCameraManager.h"
#include "ProgramOutput.h"
#include "SetupRun.h"
#include "UObject/UnrealType.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>

namespace
{
	/** The Blueprint variables of the plug-in's camera that the setup writes. */
	const TCHAR* const CameraVariables[] = {TEXT("LiveLinkPreset"), TEXT("Set LiveLink Preset")};

	void Heading(const TCHAR* Title)
	{
		ProgramOutput::Line(FString());
		ProgramOutput::Line(FString::Printf(TEXT("== %s =="), Title));
	}

	FString FormatTime(double Seconds)
	{
		return FString::Printf(TEXT("[t=%.3f]"), Seconds);
	}

	/** The name of one of the engine's named colours, or its channels. */
	FString DescribeColor(const FColor& Color)
	{
		struct FNamedColor
		{
			const FColor* Color;
			const TCHAR* Name;
		};
		const FNamedColor Named[] = {{&FColor::Green, TEXT("Green")}, {&FColor::Red, TEXT("Red")},
			{&FColor::White, TEXT("White")}, {&FColor::Yellow, TEXT("Yellow")}, {&FColor::Blue, TEXT("Blue")},
			{&FColor::Cyan, TEXT("Cyan")}, {&FColor::Orange, TEXT("Orange")}, {&FColor::Black, TEXT("Black")}};
		for (const FNamedColor& Candidate : Named)
		{
			if (*Candidate.Color == Color)
			{
				return FString::Printf(TEXT("%s %s"), Candidate.Name, *Color.ToString());
			}
		}
		return Color.ToString();
	}

	/** A Blueprint variable's value as text: an object's path, a switch's true or false, else its exported text. */
	FString DescribeValue(const FProperty& Property, const UObject& Container)
	{
		if (const FObjectPropertyBase* ObjectProperty = CastField<FObjectPropertyBase>(&Property))
		{
			const UObject* Value = ObjectProperty->GetObjectPropertyValue_InContainer(&Container);
			return Value ? Value->GetPathName() : FString(TEXT("None"));
		}
		if (const FBoolProperty* BoolProperty = CastField<FBoolProperty>(&Property))
		{
			return BoolProperty->GetPropertyValue_InContainer(&Container) ? TEXT("true") : TEXT("false");
		}
		FString Text;
		Property.ExportTextItem_InContainer(Text, &Container, nullptr, nullptr, 0);
		return Text;
	}

	FString FromPath(const std::filesystem::path& Path)
	{
		return FString(UTF8_TO_TCHAR(Path.generic_string().c_str()));
	}
} // namespace

namespace SetupReport
{
	void PrintRun(const FSetupRunResult& Result)
	{
		Heading(TEXT("Setup call"));
		ProgramOutput::Line(
			FString::Printf(TEXT("%s -> %s"), *Result.Call, Result.bSucceeded ? TEXT("true") : TEXT("false")));
		ProgramOutput::Line(FString::Printf(TEXT("Then advanced %.3f s of application time in %d frames of 1/60 s."),
			Result.SecondsAdvanced, Result.FramesTicked));

		// The plug-in reports its progress on LogTemp; what the engine says meanwhile matters only when it warns.
		const FName SetupCategory(TEXT("LogTemp"));
		TArray<FString> SetupLines;
		TArray<FString> EngineProblems;
		for (const FCapturedLogLine& Line : Result.LogLines)
		{
			if (Line.Category == SetupCategory)
			{
				SetupLines.Add(FString::Printf(
					TEXT("%s %s: %s"), *FormatTime(Line.Time), ToString(Line.Verbosity), *Line.Message));
			}
			else if (Line.Verbosity <= ELogVerbosity::Warning)
			{
				EngineProblems.Add(FString::Printf(TEXT("%s %s: %s: %s"), *FormatTime(Line.Time),
					*Line.Category.ToString(), ToString(Line.Verbosity), *Line.Message));
			}
		}
		Heading(TEXT("Log (LogTemp)"));
		ProgramOutput::Line(SetupLines.Num() > 0 ? FString::Join(SetupLines, TEXT("\n")) : TEXT("(nothing logged)"));
		Heading(TEXT("Warnings and errors of other log categories"));
		ProgramOutput::Line(EngineProblems.Num() > 0 ? FString::Join(EngineProblems, TEXT("\n")) : TEXT("(none)"));

		Heading(TEXT("On-screen messages"));
		if (Result.ScreenMessages.Num() == 0)
		{
			ProgramOutput::Line(TEXT("(none added)"));
		}
		for (int32 Index = 0; Index < Result.ScreenMessages.Num(); ++Index)
		{
			const FOnScreenDebugMessageRecord& Message = Result.ScreenMessages[Index];
			ProgramOutput::Line(FString::Printf(TEXT("%s \"%s\" colour %s, %.1f s, key %lld"),
				*FormatTime(Result.ScreenMessageTimes[Index]), *Message.Message, *DescribeColor(Message.DisplayColor),
				Message.TimeToDisplay, (long long)(int64)Message.Key));
		}
		ProgramOutput::Line(FString::Printf(TEXT("Still shown at the end of the run: %d"), Result.ShownMessages.Num()));
		for (const FScreenMessageString& Shown : Result.ShownMessages)
		{
			ProgramOutput::Line(FString::Printf(TEXT("  \"%s\" (%.1f of %.1f s shown, key %lld)"), *Shown.ScreenMessage,
				Shown.CurrentTimeDisplayed, Shown.TimeToDisplay, (long long)(int64)Shown.Key));
		}

		Heading(TEXT("Restart requests"));
		ProgramOutput::Line(FString::Printf(TEXT("Requests: %d"), Result.RestartRequestTimes.Num()));
		for (const double Time : Result.RestartRequestTimes)
		{
			ProgramOutput::Line(FString::Printf(TEXT("%s the editor was asked to offer a restart"), *FormatTime(Time)));
		}
	}

	void PrintCamera()
	{
		Heading(TEXT("Camera"));
		AActor* const Camera = FOrvaneCameraManager::GetLastCreatedCamera();
		if (!Camera)
		{
			ProgramOutput::Line(TEXT("No camera: GetLastCreatedCamera() returned null."));
			return;
		}
		UClass* const Class = Camera->GetClass();
		ProgramOutput::Line(FString::Printf(TEXT("Name: %s"), *Camera->GetName()));
		ProgramOutput::Line(FString::Printf(TEXT("Class: %s"), *Class->GetPathName()));
		const FVector Location = Camera->GetActorLocation();
		ProgramOutput::Line(
			FString::Printf(TEXT("Location: X=%.3f Y=%.3f Z=%.3f"), Location.X, Location.Y, Location.Z));
		int32 CamerasOfClass = 0;
		if (UWorld* const World = Camera->GetWorld())
		{
			for (TActorIterator<AActor> It(World, Class); It; ++It)
			{
				++CamerasOfClass;
			}
		}
		ProgramOutput::Line(FString::Printf(TEXT("Actors of this class in its level: %d"), CamerasOfClass));

		for (const TCHAR* const VariableName : CameraVariables)
		{
			const FProperty* Property = nullptr;
			for (TFieldIterator<FProperty> It(Class, EFieldIteratorFlags::IncludeSuper); It; ++It)
			{
				if (It->GetName() == VariableName)
				{
					Property = *It;
					break;
				}
			}
			ProgramOutput::Line(Property
									? FString::Printf(TEXT("Variable \"%s\" (%s): %s"), VariableName,
										  *Property->GetClass()->GetName(), *DescribeValue(*Property, *Camera))
									: FString::Printf(TEXT("Variable \"%s\": not found on the class"), VariableName));
		}

		const ACameraActor* const CameraActor = Cast<ACameraActor>(Camera);
		const UCameraComponent* const Component = CameraActor ? CameraActor->GetCameraComponent() : nullptr;
		if (!Component)
		{
			ProgramOutput::Line(TEXT("Post-process blendables: the actor is not a camera actor"));
			return;
		}
		const TArray<FWeightedBlendable>& Blendables = Component->PostProcessSettings.WeightedBlendables.Array;
		ProgramOutput::Line(FString::Printf(TEXT("Post-process blendables: %d"), Blendables.Num()));
		for (const FWeightedBlendable& Blendable : Blendables)
		{
			ProgramOutput::Line(FString::Printf(TEXT("  weight %.3f: %s"), Blendable.Weight,
				Blendable.Object ? *Blendable.Object->GetPathName() : TEXT("None")));
		}
	}

	void PrintLiveLinkSources()
	{
		Heading(TEXT("Live Link sources"));
		IModularFeatures& Features = IModularFeatures::Get();
		if (!Features.IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName))
		{
			ProgramOutput::Line(TEXT("No Live Link client is running."));
			return;
		}
		ILiveLinkClient& Client = Features.GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName);
		const TArray<FGuid> Sources = Client.GetSources();
		ProgramOutput::Line(FString::Printf(TEXT("Sources: %d"), Sources.Num()));
		for (const FGuid& Source : Sources)
		{
			ProgramOutput::Line(FString::Printf(TEXT("Source %s"), *Source.ToString()));
			ProgramOutput::Line(FString::Printf(TEXT("  Type: %s"), *Client.GetSourceType(Source).ToString()));
			ProgramOutput::Line(
				FString::Printf(TEXT("  Machine: %s"), *Client.GetSourceMachineName(Source).ToString()));
			const ULiveLinkSourceSettings* const Settings = Client.GetSourceSettings(Source);
			ProgramOutput::Line(FString::Printf(
				TEXT("  Connection string: %s"), Settings ? *Settings->ConnectionString : TEXT("(no settings)")));
			ProgramOutput::Line(FString::Printf(TEXT("  Factory: %s"),
				Settings && Settings->Factory ? *Settings->Factory->GetPathName() : TEXT("None")));
			ProgramOutput::Line(FString::Printf(TEXT("  Status: %s"), *Client.GetSourceStatus(Source).ToString()));
		}
	}

	void PrintConfigChanges(const FConfigSnapshot& Before, const FConfigSnapshot& After)
	{
		Heading(TEXT("Configuration written"));
		for (const FString& Problem : Before.GetProblems())
		{
			ProgramOutput::Line(TEXT("Before the run: ") + Problem);
		}
		for (const FString& Problem : After.GetProblems())
		{
			ProgramOutput::Line(TEXT("After the run: ") + Problem);
		}
		const FString Diff = FConfigSnapshot::Diff(Before, After);
		ProgramOutput::Line(Diff.IsEmpty() ? FString(TEXT("No .ini file under Config/ changed.")) : Diff);
	}

	void PrintPresetAsset(const FString& ProjectDir, const FSetupRunOptions& Options)
	{
		Heading(TEXT("Preset asset"));
		const std::filesystem::path Root(TCHAR_TO_UTF8(*ProjectDir));
		const std::filesystem::path Folder = Root / "Content" / "Orvane";
		std::error_code ErrorCode;
		TArray<FString> Files;
		TArray<FString> Packages;
		if (std::filesystem::is_directory(Folder, ErrorCode))
		{
			for (std::filesystem::recursive_directory_iterator It(Folder, ErrorCode), End; !ErrorCode && It != End;
				 It.increment(ErrorCode))
			{
				if (!It->is_regular_file(ErrorCode))
				{
					continue;
				}
				const FString Relative = FromPath(It->path().lexically_relative(Root));
				const uintmax_t Size = It->file_size(ErrorCode);
				Files.Add(FString::Printf(TEXT("%s (%llu bytes)"), *Relative, (unsigned long long)Size));
				if (It->path().extension() == ".uasset")
				{
					Packages.Add(Relative);
				}
			}
		}
		Files.Sort();
		Packages.Sort();
		ProgramOutput::Line(FString::Printf(TEXT("Files under Content/Orvane/: %d"), Files.Num()));
		for (const FString& File : Files)
		{
			ProgramOutput::Line(TEXT("  ") + File);
		}
		if (Options.Mode == ESetupMode::Complete)
		{
			const FString Expected = FString::Printf(TEXT("Content/Orvane/%s.uasset"), *Options.PresetName);
			if (!Packages.Contains(Expected))
			{
				ProgramOutput::Line(FString::Printf(TEXT("No package file %s."), *Expected));
			}
		}
		for (const FString& Package : Packages)
		{
			std::ifstream File(Root / TCHAR_TO_UTF8(*Package), std::ios::binary);
			const std::string Text((std::istreambuf_iterator<char>(File)), std::istreambuf_iterator<char>());
			ProgramOutput::Line(FString::Printf(TEXT("--- %s ---"), *Package));
			FString Content(UTF8_TO_TCHAR(Text.c_str()));
			// The file's own final newline would print as an empty line.
			if (Content.EndsWith(TEXT("\n")))
			{
				Content.LeftChopInline(1);
			}
			ProgramOutput::Line(Content);
		}
	}
} // namespace SetupReport

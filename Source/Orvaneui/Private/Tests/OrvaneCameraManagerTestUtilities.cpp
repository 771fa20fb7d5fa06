// Copyright Orvane. All Rights Reserved.

#include "OrvaneCameraManagerTestUtilities.h"

#include "Camera/CameraComponent.h"
#include "CineCameraActor.h"
#include "Containers/Ticker.h"
#include "Editor.h"
#include "Editor/EditorEngine.h"
#include "Engine/World.h"
#include "EngineUtils.h"
#include "GameFramework/Actor.h"
#include "Misc/App.h"
#include "Misc/AutomationTest.h"
#include "Misc/PackageName.h"
#include "OrvaneLiveLinkHelper.h"
#include "Tests/OrvaneTrackingTestUtilities.h"
#include "UObject/UnrealType.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace OrvaneCameraManagerTests
{
	const TCHAR* const CameraClassPath = TEXT("/Orvane/Orvane_VP_Camera.Orvane_VP_Camera_C");
	const TCHAR* const GameModeClassPath = TEXT("/Orvane/Orvane_GM.Orvane_GM_C");
	const TCHAR* const MaskMaterialPath = TEXT("/Orvane/Materials/Orvane_MI_MaskStencil");

	UWorld* GetEditorWorld()
	{
		return GEditor ? GEditor->GetEditorWorldContext(false).World() : nullptr;
	}

	UClass* LoadCameraClass()
	{
		return LoadObject<UClass>(nullptr, CameraClassPath);
	}

	TArray<AActor*> GetActorsOfClass(UClass* Class)
	{
		TArray<AActor*> Actors;
		UWorld* World = GetEditorWorld();
		if (World && Class)
		{
			for (TActorIterator<AActor> It(World, Class); It; ++It)
			{
				Actors.Add(*It);
			}
		}
		return Actors;
	}

	void DestroyActorsOfClass(UClass* Class)
	{
		UWorld* World = GetEditorWorld();
		for (AActor* Actor : GetActorsOfClass(Class))
		{
			World->DestroyActor(Actor);
		}
	}

	FString MakeFreeLoopbackEndpoint()
	{
		return FString::Printf(TEXT("127.0.0.1:%d"), OrvaneTrackingTests::FindFreeUdpPort());
	}

	void RemoveSourcesAndPresets(const TArray<FString>& PresetNames)
	{
		UOrvaneLiveLinkHelper::RemoveAllOrvaneSources();
		for (const FString& PresetName : PresetNames)
		{
			UOrvaneLiveLinkHelper::RemoveExistingPreset(PresetName);
		}
	}

	void WaitSeconds(double Seconds, TFunction<void()> Then)
	{
		const double Start = FApp::GetCurrentTime();
		FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
			[Start, Seconds, Then = MoveTemp(Then)](float)
			{
				if (FApp::GetCurrentTime() - Start < Seconds)
				{
					return true;
				}
				Then();
				return false;
			}));
	}

	TArray<FWeightedBlendable> GetBlendables(const AActor* Camera)
	{
		const ACineCameraActor* CineCamera = Cast<ACineCameraActor>(Camera);
		if (!CineCamera || !CineCamera->GetCameraComponent())
		{
			return {};
		}
		return CineCamera->GetCameraComponent()->PostProcessSettings.WeightedBlendables.Array;
	}

	UObject* GetPresetVariable(const AActor* Camera)
	{
		const FObjectPropertyBase* Property =
			Camera ? FindFProperty<FObjectPropertyBase>(Camera->GetClass(), FName(TEXT("LiveLinkPreset"))) : nullptr;
		return Property ? Property->GetObjectPropertyValue_InContainer(Camera) : nullptr;
	}

	bool GetPresetEnableVariable(const AActor* Camera)
	{
		const FBoolProperty* Property =
			Camera ? FindFProperty<FBoolProperty>(Camera->GetClass(), FName(TEXT("Set LiveLink Preset"))) : nullptr;
		return Property && Property->GetPropertyValue_InContainer(Camera);
	}

	UObject* FindPresetAsset(const FString& PresetName)
	{
		const FString ObjectPath =
			FString::Printf(TEXT("/Game/Orvane/%s.%s"), *PresetName, *FPackageName::GetShortName(PresetName));
		return StaticFindObject(UObject::StaticClass(), nullptr, *ObjectPath);
	}

	bool PresetFileExists(const FString& PresetName)
	{
		return FPackageName::DoesPackageExist(TEXT("/Game/Orvane/") + PresetName);
	}

	FString GetIniValue(const FString& IniText, const FString& Section, const FString& Key)
	{
		TArray<FString> Lines;
		IniText.ParseIntoArrayLines(Lines, false);
		const FString SectionHeader = TEXT("[") + Section + TEXT("]");
		bool bInSection = false;
		FString Value;
		for (const FString& RawLine : Lines)
		{
			const FString Line = RawLine.TrimStartAndEnd();
			if (Line.StartsWith(TEXT("[")))
			{
				bInSection = Line == SectionHeader;
				continue;
			}
			FString LineKey;
			FString LineValue;
			if (bInSection && Line.Split(TEXT("="), &LineKey, &LineValue) && LineKey.TrimEnd() == Key)
			{
				Value = LineValue;
			}
		}
		return Value;
	}

	TArray<FString> DiffLines(const FString& Before, const FString& After)
	{
		TArray<FString> Old;
		TArray<FString> New;
		Before.ParseIntoArrayLines(Old, false);
		After.ParseIntoArrayLines(New, false);

		// Longest common subsequence table, filled from the ends.
		const int32 OldCount = Old.Num();
		const int32 NewCount = New.Num();
		TArray<int32> Common;
		Common.SetNumZeroed((OldCount + 1) * (NewCount + 1));
		const auto At = [NewCount](int32 I, int32 J)
		{
			return I * (NewCount + 1) + J;
		};
		for (int32 I = OldCount - 1; I >= 0; --I)
		{
			for (int32 J = NewCount - 1; J >= 0; --J)
			{
				Common[At(I, J)] = Old[I].Equals(New[J], ESearchCase::CaseSensitive)
									   ? Common[At(I + 1, J + 1)] + 1
									   : FMath::Max(Common[At(I + 1, J)], Common[At(I, J + 1)]);
			}
		}

		TArray<FString> Changes;
		int32 I = 0;
		int32 J = 0;
		while (I < OldCount || J < NewCount)
		{
			if (I < OldCount && J < NewCount && Old[I].Equals(New[J], ESearchCase::CaseSensitive))
			{
				++I;
				++J;
			}
			else if (J < NewCount && (I == OldCount || Common[At(I, J + 1)] >= Common[At(I + 1, J)]))
			{
				Changes.Add(TEXT("+") + New[J++]);
			}
			else
			{
				Changes.Add(TEXT("-") + Old[I++]);
			}
		}
		return Changes;
	}

	bool OnlyGameModeChanged(const FString& Before, const FString& After)
	{
		for (const FString& Change : DiffLines(Before, After))
		{
			const FString Line = Change.Mid(1).TrimStartAndEnd();
			if (!Line.IsEmpty() && !Line.StartsWith(TEXT("GlobalDefaultGameMode=")) &&
				Line != TEXT("[/Script/EngineSettings.GameMapsSettings]"))
			{
				return false;
			}
		}
		return true;
	}

	TArray<FOrvaneLogLine> GetCompleteSetupLines()
	{
		return {LogWarning(TEXT("Default game mode set to: /Orvane/Orvane_GM.Orvane_GM_C")),
			LogWarning(TEXT("LiveLink source created successfully")),
			LogWarning(TEXT("Orvane Camera created successfully"))};
	}

	TArray<FOrvaneLogLine> GetPresetStepLines()
	{
		return {LogWarning(TEXT("Delayed Preset creation")), LogWarning(TEXT("LiveLink preset created successfully")),
			LogWarning(TEXT("LiveLink startup preset configured")),
			LogWarning(TEXT("LiveLink preset applied to camera successfully"))};
	}

	TArray<FOrvaneLogLine> GetTwoCompleteSetupsLines(const FString& FirstCameraName)
	{
		TArray<FOrvaneLogLine> Lines = GetCompleteSetupLines();
		Lines.Append({LogWarning(TEXT("Default game mode set to: /Orvane/Orvane_GM.Orvane_GM_C")),
			LogWarning(TEXT("LiveLink source created successfully")),
			LogWarning(TEXT("Removing existing Orvane camera: ") + FirstCameraName),
			LogWarning(TEXT("Removed 1 existing Orvane cameras")),
			LogWarning(TEXT("Orvane Camera created successfully"))});
		return Lines;
	}

	void ExpectTwoCompleteSetups(FAutomationTestBase& Test)
	{
		const FString RemovalPrefix = TEXT("Removing existing Orvane camera: ");
		TArray<FOrvaneLogLine> Declared = GetTwoCompleteSetupsLines(FString());
		Declared.RemoveAll(
			[&RemovalPrefix](const FOrvaneLogLine& Line)
			{
				return Line.Text == RemovalPrefix;
			});
		Declared.Append(GetPresetStepLines());
		Declared.Append(GetPresetStepLines());
		FOrvaneLogCapture::ExpectLines(Test, Declared);
		Test.AddExpectedErrorPlain(RemovalPrefix, EAutomationExpectedErrorFlags::Contains, 1);
	}
} // namespace OrvaneCameraManagerTests

#endif

// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "LiveLinkModuleFixture.h"
#include "LiveLinkPreset.h"
#include "LiveLinkTestSource.h"
#include "LiveLinkTestSourceFactory.h"
#include "LiveLinkTestSourceSettings.h"
#include "LiveLinkTestUtils.h"
#include "Misc/FileHelper.h"
#include "PackageTestUtils.h"
#include "Roles/LiveLinkCameraRole.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <gtest/gtest.h>

using namespace LiveLinkTestUtils;

namespace
{
	const TCHAR* const PresetPackage = TEXT("/Game/Orvane/LL_Preset");
	const TCHAR* const PresetObject = TEXT("/Game/Orvane/LL_Preset.LL_Preset");
	const FName CameraName(TEXT("Camera"));

	class FLiveLinkPresetTest : public FLiveLinkModuleFixture
	{
	protected:
		void TearDown() override
		{
			PackageTestUtils::Unload(PresetPackage);
			FLiveLinkModuleFixture::TearDown();
		}

		/** Adds a test source that already pushes a camera subject. */
		FGuid AddCameraSource(const TCHAR* ConnectionString, const TCHAR* Label)
		{
			TSharedPtr<FLiveLinkTestSource> Source = MakeShared<FLiveLinkTestSource>(ConnectionString);
			const FGuid Guid = Client->AddSource(Source);
			Cast<ULiveLinkTestSourceSettings>(Client->GetSourceSettings(Guid))->Label = Label;
			const FLiveLinkSubjectKey Key(Guid, CameraName);
			Client->PushSubjectStaticData_AnyThread(Key, ULiveLinkCameraRole::StaticClass(), MakeCameraStatic());
			Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(35.f));
			Frame();
			return Guid;
		}

		/** A preset asset, in its package, built from the client. */
		ULiveLinkPreset* BuildPresetAsset()
		{
			UPackage* Package = CreatePackage(PresetPackage);
			ULiveLinkPreset* Preset =
				NewObject<ULiveLinkPreset>(Package, TEXT("LL_Preset"), RF_Public | RF_Standalone | RF_Transactional);
			Preset->BuildFromClient();
			return Preset;
		}

		/** Applies a preset with ApplyToClientLatent and runs frames until it reports; the result or unset. */
		TOptional<bool> ApplyLatent(ULiveLinkPreset* Preset)
		{
			TOptional<bool> Result;
			Preset->ApplyToClientLatent(
				[&Result](bool bSuccess)
				{
					Result = bSuccess;
				});
			RunFramesUntil(
				[&Result]()
				{
					return Result.IsSet();
				});
			return Result;
		}

		/** The source the factory created last, if it is still alive. */
		static TSharedPtr<FLiveLinkTestSource> LastCreatedSource()
		{
			const TArray<TWeakPtr<FLiveLinkTestSource>> Created = FLiveLinkTestSource::GetCreatedByFactory();
			return Created.Num() > 0 ? Created.Last().Pin() : TSharedPtr<FLiveLinkTestSource>();
		}
	};
} // namespace

TEST_F(FLiveLinkPresetTest, BuildFromClientCopiesSourcesAndSubjectsIntoThePreset)
{
	const FGuid Guid = AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("Stage A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();

	ASSERT_EQ(Preset->GetSourcePresets().Num(), 1);
	const FLiveLinkSourcePreset& Source = Preset->GetSourcePresets()[0];
	EXPECT_EQ(Source.Guid, Guid);
	ASSERT_NE(Source.Settings, nullptr);
	EXPECT_EQ(Source.Settings->GetOuter(), static_cast<UObject*>(Preset));
	EXPECT_NE(Source.Settings.Get(), Client->GetSourceSettings(Guid));
	EXPECT_EQ(ToUtf8(Source.Settings->ConnectionString), "10.1.2.3:9001");
	EXPECT_EQ(Source.Settings->Factory.Get(), ULiveLinkTestSourceFactory::StaticClass());
	EXPECT_EQ(ToUtf8(Source.SourceType.ToString()), "Test Source");

	ASSERT_EQ(Preset->GetSubjectPresets().Num(), 1);
	const FLiveLinkSubjectPreset& Subject = Preset->GetSubjectPresets()[0];
	EXPECT_EQ(Subject.Key, FLiveLinkSubjectKey(Guid, CameraName));
	EXPECT_EQ(Subject.Role.Get(), ULiveLinkCameraRole::StaticClass());
	EXPECT_TRUE(Subject.bEnabled);
	ASSERT_NE(Subject.Settings, nullptr);
	EXPECT_EQ(Subject.Settings->GetOuter(), static_cast<UObject*>(Preset));
	EXPECT_TRUE(Preset->GetPackage()->IsDirty());
}

TEST_F(FLiveLinkPresetTest, APresetSurvivesSaveUnloadLoadAndRecreatesItsSources)
{
	const FGuid Guid = AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("Stage A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	// Building twice leaves one copy of each settings object in the preset.
	Preset->BuildFromClient();
	ASSERT_TRUE(PackageTestUtils::Save(Preset->GetPackage(), Preset));

	FString Text;
	ASSERT_TRUE(FFileHelper::LoadFileToString(Text, *PackageTestUtils::FileOf(PresetPackage)));
	EXPECT_TRUE(Text.Contains(TEXT("Class=/Script/LiveLinkTestSources.LiveLinkTestSourceSettings")));
	int32 SettingsBlocks = 0;
	for (int32 Index = Text.Find(TEXT("Class=/Script/LiveLinkTestSources.LiveLinkTestSourceSettings"));
		 Index != INDEX_NONE; Index = Text.Find(TEXT("Class=/Script/LiveLinkTestSources.LiveLinkTestSourceSettings"),
								  ESearchCase::CaseSensitive, ESearchDir::FromStart, Index + 1))
	{
		++SettingsBlocks;
	}
	EXPECT_EQ(SettingsBlocks, 1) << ToUtf8(Text);
	EXPECT_TRUE(Text.Contains(TEXT("ConnectionString=\"10.1.2.3:9001\""))) << ToUtf8(Text);
	EXPECT_TRUE(Text.Contains(TEXT("Label=\"Stage A\""))) << ToUtf8(Text);

	RemoveEverySource();
	PackageTestUtils::Unload(PresetPackage);
	ASSERT_EQ(FindObject<ULiveLinkPreset>(nullptr, PresetObject), nullptr);

	ULiveLinkPreset* Loaded = LoadObject<ULiveLinkPreset>(nullptr, PresetObject);
	ASSERT_NE(Loaded, nullptr);
	ASSERT_EQ(Loaded->GetSourcePresets().Num(), 1);
	const FLiveLinkSourcePreset& Source = Loaded->GetSourcePresets()[0];
	EXPECT_EQ(Source.Guid, Guid);
	ASSERT_NE(Source.Settings, nullptr);
	EXPECT_EQ(Source.Settings->GetOuter(), static_cast<UObject*>(Loaded));
	ASSERT_TRUE(Source.Settings->IsA(ULiveLinkTestSourceSettings::StaticClass()));
	EXPECT_EQ(ToUtf8(Cast<ULiveLinkTestSourceSettings>(Source.Settings.Get())->Label), "Stage A");
	EXPECT_EQ(ToUtf8(Source.Settings->ConnectionString), "10.1.2.3:9001");
	EXPECT_EQ(Source.Settings->Factory.Get(), ULiveLinkTestSourceFactory::StaticClass());
	EXPECT_EQ(ToUtf8(Source.SourceType.ToString()), "Test Source");
	ASSERT_EQ(Loaded->GetSubjectPresets().Num(), 1);
	EXPECT_EQ(Loaded->GetSubjectPresets()[0].Key, FLiveLinkSubjectKey(Guid, CameraName));
	EXPECT_EQ(Loaded->GetSubjectPresets()[0].Role.Get(), ULiveLinkCameraRole::StaticClass());

	FLiveLinkTestSource::ForgetCreatedByFactory();
	const TOptional<bool> Result = ApplyLatent(Loaded);
	ASSERT_TRUE(Result.IsSet());
	EXPECT_TRUE(Result.GetValue());
	EXPECT_EQ(Client->GetSources(), TArray<FGuid>({Guid}));
	TSharedPtr<FLiveLinkTestSource> Recreated = LastCreatedSource();
	ASSERT_TRUE(Recreated.IsValid());
	EXPECT_EQ(Recreated->GetSourceGuid(), Guid);
	EXPECT_EQ(ToUtf8(Recreated->GetConnectionString()), "10.1.2.3:9001");
	EXPECT_EQ(ToUtf8(Cast<ULiveLinkTestSourceSettings>(Client->GetSourceSettings(Guid))->Label), "Stage A");
	EXPECT_TRUE(Client->GetSubjects(true, true).Contains(FLiveLinkSubjectKey(Guid, CameraName)));
}

TEST_F(FLiveLinkPresetTest, ApplyRemovesTheClientsOtherSourcesFirst)
{
	AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("Kept in the preset"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	const FGuid PresetGuid = Preset->GetSourcePresets()[0].Guid;
	RemoveEverySource();
	const FGuid Other = AddCameraSource(TEXT("10.7.7.7:9001"), TEXT("Not in the preset"));

	const TOptional<bool> Result = ApplyLatent(Preset);
	ASSERT_TRUE(Result.IsSet());
	EXPECT_TRUE(Result.GetValue());
	EXPECT_EQ(Client->GetSources(true), TArray<FGuid>({PresetGuid}));
	EXPECT_FALSE(Client->GetSources(true).Contains(Other));
}

TEST_F(FLiveLinkPresetTest, OnlyOneApplyRunsAtATime)
{
	AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	RemoveEverySource();
	TSharedPtr<FLiveLinkTestSource> Slow = MakeShared<FLiveLinkTestSource>(TEXT("10.5.5.5:9001"));
	Slow->RefuseShutdownRequests(3);
	Client->AddSource(Slow);

	FLogCapture Log;
	TOptional<bool> First;
	TOptional<bool> Second;
	Preset->ApplyToClientLatent(
		[&First](bool bSuccess)
		{
			First = bSuccess;
		});
	ULiveLinkPreset* Other = NewObject<ULiveLinkPreset>(GetTransientPackage());
	Other->ApplyToClientLatent(
		[&Second](bool bSuccess)
		{
			Second = bSuccess;
		});
	ASSERT_TRUE(Second.IsSet());
	EXPECT_FALSE(Second.GetValue());
	EXPECT_FALSE(First.IsSet());
	EXPECT_EQ(Log.Count(TEXT("an operation is already in progress")), 1);

	ASSERT_TRUE(RunFramesUntil(
		[&First]()
		{
			return First.IsSet();
		}));
	EXPECT_TRUE(First.GetValue());
	EXPECT_GE(Slow->CountCalls(TEXT("RequestSourceShutdown")), 4);
	EXPECT_EQ(Client->GetSources(true), TArray<FGuid>({Preset->GetSourcePresets()[0].Guid}));
}

TEST_F(FLiveLinkPresetTest, ApplyGivesUpAfterOneSecondWhenASourceWillNotShutDown)
{
	AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	RemoveEverySource();
	TSharedPtr<FLiveLinkTestSource> Stubborn = MakeShared<FLiveLinkTestSource>(TEXT("10.5.5.5:9001"));
	Stubborn->RefuseShutdownRequests(MAX_int32);
	Client->AddSource(Stubborn);

	FLogCapture Log;
	const double Start = FPlatformTime::Seconds();
	const TOptional<bool> Result = ApplyLatent(Preset);
	const double Elapsed = FPlatformTime::Seconds() - Start;
	ASSERT_TRUE(Result.IsSet());
	EXPECT_FALSE(Result.GetValue());
	EXPECT_GE(Elapsed, 1.0);
	EXPECT_EQ(Log.Count(TEXT("1 source(s) did not shut down within 1.0 seconds")), 1);
	EXPECT_FALSE(Client->GetSources(true).Contains(Preset->GetSourcePresets()[0].Guid));

	// Once the source lets go, another apply goes through.
	Stubborn->RefuseShutdownRequests(0);
	const TOptional<bool> Retry = ApplyLatent(Preset);
	ASSERT_TRUE(Retry.IsSet());
	EXPECT_TRUE(Retry.GetValue());
}

TEST_F(FLiveLinkPresetTest, CancelStopsTheApplyAndFreesTheWay)
{
	AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	RemoveEverySource();
	TSharedPtr<FLiveLinkTestSource> Slow = MakeShared<FLiveLinkTestSource>(TEXT("10.5.5.5:9001"));
	Slow->RefuseShutdownRequests(1000);
	Client->AddSource(Slow);

	TOptional<bool> Result;
	Preset->ApplyToClientLatent(
		[&Result](bool bSuccess)
		{
			Result = bSuccess;
		});
	Frame();
	EXPECT_FALSE(Result.IsSet());
	Preset->CancelLatentAction();
	ASSERT_TRUE(Result.IsSet());
	EXPECT_FALSE(Result.GetValue());
	Frame();
	EXPECT_FALSE(Client->GetSources(true).Contains(Preset->GetSourcePresets()[0].Guid));

	Slow->RefuseShutdownRequests(0);
	const TOptional<bool> Retry = ApplyLatent(Preset);
	ASSERT_TRUE(Retry.IsSet());
	EXPECT_TRUE(Retry.GetValue());
}

TEST_F(FLiveLinkPresetTest, SynchronousApplyNeedsSourcesThatShutDownAtOnce)
{
	AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	const FGuid PresetGuid = Preset->GetSourcePresets()[0].Guid;
	EXPECT_TRUE(Preset->ApplyToClient());
	EXPECT_EQ(Client->GetSources(true), TArray<FGuid>({PresetGuid}));

	TSharedPtr<FLiveLinkTestSource> Slow = MakeShared<FLiveLinkTestSource>(TEXT("10.5.5.5:9001"));
	Slow->RefuseShutdownRequests(1);
	Client->AddSource(Slow);
	FLogCapture Log;
	EXPECT_FALSE(Preset->ApplyToClient());
	EXPECT_EQ(Log.Count(TEXT("ApplyToClient: 1 source(s) have not shut down yet")), 1);
}

TEST_F(FLiveLinkPresetTest, AddToClientKeepsTheOtherSources)
{
	const FGuid PresetGuid = AddCameraSource(TEXT("10.1.2.3:9001"), TEXT("A"));
	ULiveLinkPreset* Preset = BuildPresetAsset();
	RemoveEverySource();
	const FGuid Other = AddCameraSource(TEXT("10.7.7.7:9001"), TEXT("Other"));

	FLiveLinkTestSource::ForgetCreatedByFactory();
	EXPECT_TRUE(Preset->AddToClient());
	TArray<FGuid> Sources = Client->GetSources();
	EXPECT_EQ(Sources.Num(), 2);
	EXPECT_TRUE(Sources.Contains(Other));
	EXPECT_TRUE(Sources.Contains(PresetGuid));
	TSharedPtr<FLiveLinkTestSource> FirstCopy = LastCreatedSource();
	ASSERT_TRUE(FirstCopy.IsValid());

	// Without re-creation the existing source stays as it is.
	EXPECT_TRUE(Preset->AddToClient(false));
	EXPECT_EQ(LastCreatedSource(), FirstCopy);

	// With re-creation it is replaced by a new one with the same GUID.
	EXPECT_TRUE(Preset->AddToClient(true));
	TSharedPtr<FLiveLinkTestSource> SecondCopy = LastCreatedSource();
	ASSERT_TRUE(SecondCopy.IsValid());
	EXPECT_NE(SecondCopy, FirstCopy);
	EXPECT_EQ(SecondCopy->GetSourceGuid(), PresetGuid);
	EXPECT_EQ(Client->GetSources().Num(), 2);
}

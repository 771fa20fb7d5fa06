// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "HAL/PlatformTime.h"
#include "ILiveLinkClient.h"
#include "LiveLinkPresetTypes.h"
#include "LiveLinkSourceSettings.h"
#include "LiveLinkTypes.h"
#include "Roles/LiveLinkBasicRole.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"
#include "Roles/LiveLinkTransformRole.h"
#include "Roles/LiveLinkTransformTypes.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

#include <gtest/gtest.h>

namespace
{
	FLiveLinkFrameDataStruct MakeCameraFrame(float FocalLength)
	{
		FLiveLinkFrameDataStruct Frame(FLiveLinkCameraFrameData::StaticStruct());
		Frame.Cast<FLiveLinkCameraFrameData>()->FocalLength = FocalLength;
		return Frame;
	}

	/** The text the property system writes for a member of a struct instance. */
	FString ExportMember(const UScriptStruct* Struct, const void* Instance, const TCHAR* Member)
	{
		const FProperty* Property = Struct->FindPropertyByName(FName(Member));
		EXPECT_NE(Property, nullptr) << ToUtf8(Member);
		FString Text;
		if (Property)
		{
			Property->ExportTextItem_Direct(
				Text, Property->ContainerPtrToValuePtr<void>(Instance), nullptr, nullptr, PPF_Delimited);
		}
		return Text;
	}
} // namespace

TEST(LiveLinkDataStructTest, CastFollowsTheStructHierarchy)
{
	FLiveLinkFrameDataStruct Camera = MakeCameraFrame(35.f);
	ASSERT_TRUE(Camera.IsValid());
	EXPECT_EQ(Camera.GetStruct(), FLiveLinkCameraFrameData::StaticStruct());
	ASSERT_NE(Camera.Cast<FLiveLinkCameraFrameData>(), nullptr);
	EXPECT_EQ(Camera.Cast<FLiveLinkCameraFrameData>()->FocalLength, 35.f);
	EXPECT_NE(Camera.Cast<FLiveLinkTransformFrameData>(), nullptr);
	EXPECT_EQ(static_cast<void*>(Camera.Cast<FLiveLinkBaseFrameData>()), static_cast<void*>(Camera.GetBaseData()));

	FLiveLinkFrameDataStruct Transform(FLiveLinkTransformFrameData::StaticStruct());
	EXPECT_NE(Transform.Cast<FLiveLinkTransformFrameData>(), nullptr);
	EXPECT_EQ(Transform.Cast<FLiveLinkCameraFrameData>(), nullptr);

	const FLiveLinkFrameDataStruct Empty;
	EXPECT_FALSE(Empty.IsValid());
	EXPECT_EQ(Empty.Cast<FLiveLinkBaseFrameData>(), nullptr);
}

TEST(LiveLinkDataStructTest, NewInstancesHaveTheDocumentedDefaults)
{
	const FLiveLinkCameraFrameData Frame;
	EXPECT_EQ(Frame.FieldOfView, 90.f);
	EXPECT_FLOAT_EQ(Frame.AspectRatio, 1.777778f);
	EXPECT_EQ(Frame.FocalLength, 50.f);
	EXPECT_FLOAT_EQ(Frame.Aperture, 2.8f);
	EXPECT_EQ(Frame.FocusDistance, 100000.f);
	EXPECT_EQ(Frame.ProjectionMode, ELiveLinkCameraProjectionMode::Perspective);

	const FLiveLinkCameraStaticData Static;
	EXPECT_TRUE(Static.bIsLocationSupported);
	EXPECT_TRUE(Static.bIsRotationSupported);
	EXPECT_FALSE(Static.bIsScaleSupported);
	EXPECT_FALSE(Static.bIsFieldOfViewSupported);
	EXPECT_FALSE(Static.bIsAspectRatioSupported);
	EXPECT_FALSE(Static.bIsFocalLengthSupported);
	EXPECT_FALSE(Static.bIsProjectionModeSupported);
	EXPECT_FALSE(Static.bIsApertureSupported);
	EXPECT_FALSE(Static.bIsFocusDistanceSupported);
	EXPECT_TRUE(Static.bIsDepthOfFieldSupported);
	EXPECT_EQ(Static.FilmBackWidth, -1.f);
	EXPECT_EQ(Static.FilmBackHeight, -1.f);

	// The wrapper builds its instance through the struct's reflection: the same defaults.
	FLiveLinkFrameDataStruct Wrapped(FLiveLinkCameraFrameData::StaticStruct());
	EXPECT_EQ(Wrapped.Cast<FLiveLinkCameraFrameData>()->FocusDistance, 100000.f);
	EXPECT_EQ(Wrapped.Cast<FLiveLinkCameraFrameData>()->Transform.GetScale3D(), FVector(1, 1, 1));
}

TEST(LiveLinkDataStructTest, MovingHandsOverTheInstance)
{
	FLiveLinkFrameDataStruct Source = MakeCameraFrame(24.f);
	const FLiveLinkBaseFrameData* Instance = Source.GetBaseData();
	FLiveLinkFrameDataStruct Moved(MoveTemp(Source));
	EXPECT_FALSE(Source.IsValid());
	EXPECT_EQ(Moved.GetBaseData(), Instance);

	FLiveLinkFrameDataStruct Assigned = MakeCameraFrame(85.f);
	Assigned = MoveTemp(Moved);
	EXPECT_FALSE(Moved.IsValid());
	EXPECT_EQ(Assigned.GetBaseData(), Instance);
	EXPECT_EQ(Assigned.Cast<FLiveLinkCameraFrameData>()->FocalLength, 24.f);

	static_assert(!std::is_copy_constructible_v<FLiveLinkFrameDataStruct>);
	static_assert(!std::is_copy_assignable_v<FLiveLinkFrameDataStruct>);
}

TEST(LiveLinkDataStructTest, InitializeWithAndCloneDataMakeIndependentCopies)
{
	FLiveLinkFrameDataStruct Original = MakeCameraFrame(40.f);
	Original.GetBaseData()->PropertyValues = {1.f, 2.f};

	FLiveLinkFrameDataStruct Copy;
	Copy.InitializeWith(Original);
	ASSERT_TRUE(Copy.IsValid());
	EXPECT_NE(Copy.GetBaseData(), Original.GetBaseData());
	EXPECT_EQ(Copy, Original);
	Copy.Cast<FLiveLinkCameraFrameData>()->FocalLength = 41.f;
	EXPECT_NE(Copy, Original);
	EXPECT_EQ(Original.Cast<FLiveLinkCameraFrameData>()->FocalLength, 40.f);

	FLiveLinkCameraFrameData Plain;
	Plain.Aperture = 4.f;
	FLiveLinkFrameDataStruct FromPlain;
	FromPlain.InitializeWith(&Plain);
	EXPECT_EQ(FromPlain.GetStruct(), FLiveLinkCameraFrameData::StaticStruct());
	EXPECT_EQ(FromPlain.Cast<FLiveLinkCameraFrameData>()->Aperture, 4.f);

	FLiveLinkBaseFrameData* Clone = Original.CloneData();
	ASSERT_NE(Clone, nullptr);
	EXPECT_EQ(static_cast<FLiveLinkCameraFrameData*>(Clone)->FocalLength, 40.f);
	EXPECT_EQ(Clone->PropertyValues.Num(), 2);
	FLiveLinkCameraFrameData::StaticStruct()->DestroyStruct(Clone);
	FMemory::Free(Clone);

	Original.Reset();
	EXPECT_FALSE(Original.IsValid());
	EXPECT_EQ(Original.CloneData(), nullptr);
}

TEST(LiveLinkDataStructTest, ExternalMemoryIsNotOwned)
{
	FLiveLinkCameraFrameData External;
	External.FocalLength = 12.f;
	{
		FLiveLinkFrameDataStruct View(FLiveLinkCameraFrameData::StaticStruct(), &External);
		EXPECT_EQ(View.Cast<FLiveLinkCameraFrameData>(), &External);
		View.Cast<FLiveLinkCameraFrameData>()->FocalLength = 13.f;
	}
	// The wrapper is gone and the struct is intact (a sanitizer would report a free of stack memory).
	EXPECT_EQ(External.FocalLength, 13.f);
}

TEST(LiveLinkDataStructTest, RolesNameTheirStructsAndValidateData)
{
	const ULiveLinkCameraRole* Camera = GetDefault<ULiveLinkCameraRole>();
	const ULiveLinkTransformRole* Transform = GetDefault<ULiveLinkTransformRole>();
	EXPECT_TRUE(ULiveLinkCameraRole::StaticClass()->IsChildOf(ULiveLinkTransformRole::StaticClass()));
	EXPECT_TRUE(ULiveLinkBasicRole::StaticClass()->IsChildOf(ULiveLinkRole::StaticClass()));
	EXPECT_EQ(Camera->GetStaticDataStruct(), FLiveLinkCameraStaticData::StaticStruct());
	EXPECT_EQ(Camera->GetFrameDataStruct(), FLiveLinkCameraFrameData::StaticStruct());
	EXPECT_EQ(Camera->GetBlueprintDataStruct(), FLiveLinkCameraBlueprintData::StaticStruct());
	EXPECT_EQ(ToUtf8(Camera->GetDisplayName().ToString()), "Camera");
	EXPECT_TRUE(FLiveLinkCameraFrameData::StaticStruct()->IsChildOf(FLiveLinkBaseFrameData::StaticStruct()));

	bool bWarn = false;
	FLiveLinkStaticDataStruct CameraStatic(FLiveLinkCameraStaticData::StaticStruct());
	FLiveLinkStaticDataStruct TransformStatic(FLiveLinkTransformStaticData::StaticStruct());
	EXPECT_TRUE(Camera->IsStaticDataValid(CameraStatic, bWarn));
	EXPECT_TRUE(Transform->IsStaticDataValid(CameraStatic, bWarn));
	EXPECT_FALSE(Camera->IsStaticDataValid(TransformStatic, bWarn));
	EXPECT_FALSE(Camera->IsStaticDataValid(FLiveLinkStaticDataStruct(), bWarn));

	FLiveLinkFrameDataStruct Frame = MakeCameraFrame(50.f);
	EXPECT_TRUE(Camera->IsFrameDataValid(CameraStatic, Frame, bWarn));
	CameraStatic.GetBaseData()->PropertyNames = {TEXT("Zoom")};
	EXPECT_FALSE(Camera->IsFrameDataValid(CameraStatic, Frame, bWarn));
	Frame.GetBaseData()->PropertyValues = {0.5f};
	EXPECT_TRUE(Camera->IsFrameDataValid(CameraStatic, Frame, bWarn));
	FLiveLinkFrameDataStruct TransformFrame(FLiveLinkTransformFrameData::StaticStruct());
	EXPECT_FALSE(Camera->IsFrameDataValid(CameraStatic, TransformFrame, bWarn));

	float Zoom = 0.f;
	EXPECT_TRUE(CameraStatic.GetBaseData()->FindPropertyValue(*Frame.GetBaseData(), TEXT("Zoom"), Zoom));
	EXPECT_EQ(Zoom, 0.5f);
	EXPECT_FALSE(CameraStatic.GetBaseData()->FindPropertyValue(*Frame.GetBaseData(), TEXT("Iris"), Zoom));
}

TEST(LiveLinkDataStructTest, BlueprintDataIsFilledFromAFrame)
{
	FLiveLinkSubjectFrameData Subject;
	Subject.StaticData = FLiveLinkStaticDataStruct(FLiveLinkCameraStaticData::StaticStruct());
	Subject.StaticData.Cast<FLiveLinkCameraStaticData>()->bIsFocalLengthSupported = true;
	Subject.FrameData = MakeCameraFrame(18.f);
	FLiveLinkBlueprintDataStruct Blueprint(FLiveLinkCameraBlueprintData::StaticStruct());
	ASSERT_TRUE(GetDefault<ULiveLinkCameraRole>()->InitializeBlueprintData(Subject, Blueprint));
	EXPECT_EQ(Blueprint.Cast<FLiveLinkCameraBlueprintData>()->FrameData.FocalLength, 18.f);
	EXPECT_TRUE(Blueprint.Cast<FLiveLinkCameraBlueprintData>()->StaticData.bIsFocalLengthSupported);

	FLiveLinkBlueprintDataStruct WrongType(FLiveLinkTransformBlueprintData::StaticStruct());
	EXPECT_FALSE(GetDefault<ULiveLinkCameraRole>()->InitializeBlueprintData(Subject, WrongType));
}

TEST(LiveLinkTypesTest, SubjectKeysCompareAndHashByBothParts)
{
	const FGuid Source(1, 2, 3, 4);
	const FLiveLinkSubjectKey Key(Source, TEXT("Camera"));
	const FLiveLinkSubjectKey Same = {Source, FName(TEXT("Camera"))};
	EXPECT_EQ(Key, Same);
	EXPECT_EQ(GetTypeHash(Key), GetTypeHash(Same));
	EXPECT_NE(Key, FLiveLinkSubjectKey(FGuid(1, 2, 3, 5), TEXT("Camera")));
	EXPECT_NE(Key, FLiveLinkSubjectKey(Source, TEXT("Other")));

	TMap<FLiveLinkSubjectKey, int32> Map;
	Map.Add(Key, 1);
	Map.Add(FLiveLinkSubjectKey(Source, TEXT("Other")), 2);
	EXPECT_EQ(Map.FindRef(Same), 1);

	const FLiveLinkSubjectName Name(TEXT("Camera"));
	const FName& AsName = Name;
	EXPECT_EQ(AsName, FName(TEXT("Camera")));
	EXPECT_FALSE(Name.IsNone());
	EXPECT_TRUE(FLiveLinkSubjectName().IsNone());
	EXPECT_EQ(ToUtf8(Name.ToString()), "Camera");
}

TEST(LiveLinkTypesTest, WorldTimeIsOnThePlatformClock)
{
	const double Before = FPlatformTime::Seconds();
	const FLiveLinkWorldTime Now;
	const double After = FPlatformTime::Seconds();
	EXPECT_GE(Now.GetOffsettedTime(), Before);
	EXPECT_LE(Now.GetOffsettedTime(), After);
	EXPECT_EQ(Now.GetOffset(), 0.0);

	// A source clock that reads 10.0 now: the offset maps it onto the platform clock.
	const FLiveLinkWorldTime SourceClock(10.0);
	EXPECT_EQ(SourceClock.GetSourceTime(), 10.0);
	EXPECT_GE(SourceClock.GetOffsettedTime(), After);
	EXPECT_LE(SourceClock.GetOffsettedTime(), FPlatformTime::Seconds());

	FLiveLinkWorldTime Explicit(5.0, 2.0);
	EXPECT_EQ(Explicit.GetOffsettedTime(), 7.0);
	Explicit.SetClockOffset(-1.0);
	EXPECT_EQ(Explicit.GetOffsettedTime(), 4.0);

	FLiveLinkBaseFrameData Frame;
	Frame.WorldTime = FLiveLinkWorldTime(3.0, 0.5);
	Frame.MetaData.SceneTime = FQualifiedFrameTime(FTimecode(0, 0, 1, 0, false), FFrameRate(25, 1));
	const FLiveLinkTime Time = Frame.GetLiveLinkTime();
	EXPECT_EQ(Time.WorldTime, 3.5);
	EXPECT_EQ(Time.SceneTime.Time, FFrameTime(25));
}

TEST(LiveLinkTypesTest, ClientIsRegisteredUnderTheDocumentedName)
{
	EXPECT_EQ(ILiveLinkClient::ModularFeatureName, FName(TEXT("ModularFeature_LiveLinkClient")));
	EXPECT_EQ(ILiveLinkClient::LIVELINK_VERSION, 2);
}

TEST(LiveLinkReflectionTest, TimeAndIdentityStructsAreReflected)
{
	FLiveLinkMetaData MetaData;
	MetaData.SceneTime = FQualifiedFrameTime(FFrameTime(FFrameNumber(12), 0.5f), FFrameRate(30000, 1001));
	EXPECT_EQ(ToUtf8(ExportMember(FLiveLinkMetaData::StaticStruct(), &MetaData, TEXT("SceneTime"))),
		"(Time=(FrameNumber=(Value=12),SubFrame=0.500000),Rate=(Numerator=30000,Denominator=1001))");

	const FLiveLinkSubjectKey Key(FGuid(1, 2, 3, 4), TEXT("Cam"));
	EXPECT_EQ(ToUtf8(ExportMember(FLiveLinkSubjectKey::StaticStruct(), &Key, TEXT("Source"))), "(A=1,B=2,C=3,D=4)");
	EXPECT_EQ(ToUtf8(ExportMember(FLiveLinkSubjectKey::StaticStruct(), &Key, TEXT("SubjectName"))), "(Name=\"Cam\")");

	const UScriptStruct* SourcePreset = FLiveLinkSourcePreset::StaticStruct();
	EXPECT_NE(CastField<FStructProperty>(SourcePreset->FindPropertyByName(TEXT("Guid"))), nullptr);
	EXPECT_NE(CastField<FObjectProperty>(SourcePreset->FindPropertyByName(TEXT("Settings"))), nullptr);
	EXPECT_NE(CastField<FTextProperty>(SourcePreset->FindPropertyByName(TEXT("SourceType"))), nullptr);
}

TEST(LiveLinkReflectionTest, SourceSettingsHaveTheDocumentedDefaults)
{
	const ULiveLinkSourceSettings* Settings = GetDefault<ULiveLinkSourceSettings>();
	EXPECT_EQ(Settings->Mode, ELiveLinkSourceMode::EngineTime);
	EXPECT_TRUE(Settings->ConnectionString.IsEmpty());
	EXPECT_EQ(Settings->Factory.Get(), nullptr);
	EXPECT_TRUE(Settings->ParentSubject.IsNone());
	const FLiveLinkSourceBufferManagementSettings& Buffer = Settings->BufferSettings;
	EXPECT_FALSE(Buffer.bValidEngineTimeEnabled);
	EXPECT_EQ(Buffer.ValidEngineTime, 1.0f);
	EXPECT_EQ(Buffer.EngineTimeOffset, 0.0f);
	EXPECT_FALSE(Buffer.bGenerateSubFrame);
	EXPECT_EQ(Buffer.DetectedFrameRate, FFrameRate(24, 1));
	EXPECT_FALSE(Buffer.bUseTimecodeSmoothLatest);
	EXPECT_EQ(Buffer.SourceTimecodeFrameRate, FFrameRate(24, 1));
	EXPECT_FALSE(Buffer.bValidTimecodeFrameEnabled);
	EXPECT_EQ(Buffer.ValidTimecodeFrame, 30);
	EXPECT_EQ(Buffer.TimecodeFrameOffset, 0.f);
	EXPECT_EQ(Buffer.LatestOffset, 0);
	EXPECT_EQ(Buffer.MaxNumberOfFrameToBuffered, 10);
	EXPECT_TRUE(Buffer.bKeepAtLeastOneFrame);

	const UClass* Class = ULiveLinkSourceSettings::StaticClass();
	for (const TCHAR* Name :
		{TEXT("Mode"), TEXT("BufferSettings"), TEXT("ConnectionString"), TEXT("Factory"), TEXT("ParentSubject")})
	{
		EXPECT_NE(Class->FindPropertyByName(FName(Name)), nullptr) << ToUtf8(Name);
	}
}

TEST(LiveLinkReflectionTest, OnlyTheBufferSettingsOfTheCurrentModeCanBeEdited)
{
	ULiveLinkSourceSettings* Settings = NewObject<ULiveLinkSourceSettings>(GetTransientPackage());
	const UScriptStruct* Buffer = FLiveLinkSourceBufferManagementSettings::StaticStruct();
	const FProperty* EngineTimeOffset = Buffer->FindPropertyByName(TEXT("EngineTimeOffset"));
	const FProperty* LatestOffset = Buffer->FindPropertyByName(TEXT("LatestOffset"));
	const FProperty* MaxFrames = Buffer->FindPropertyByName(TEXT("MaxNumberOfFrameToBuffered"));
	ASSERT_NE(EngineTimeOffset, nullptr);
	ASSERT_NE(LatestOffset, nullptr);
	ASSERT_NE(MaxFrames, nullptr);

	EXPECT_TRUE(Settings->CanEditChange(EngineTimeOffset));
	EXPECT_FALSE(Settings->CanEditChange(LatestOffset));
	Settings->Mode = ELiveLinkSourceMode::Latest;
	EXPECT_FALSE(Settings->CanEditChange(EngineTimeOffset));
	EXPECT_TRUE(Settings->CanEditChange(LatestOffset));
	EXPECT_TRUE(Settings->CanEditChange(MaxFrames));
}

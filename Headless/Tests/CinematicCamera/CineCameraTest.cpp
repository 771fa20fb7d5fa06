// Copyright Orvane. All Rights Reserved.

#include "../Engine/EngineTestWorld.h"
#include "CineCameraActor.h"
#include "CineCameraComponent.h"
#include "EngineUtils.h"
#include "UObject/Package.h"
#include "UObject/UnrealType.h"

namespace
{
	class FCineCameraTest : public EngineTestWorld::FWorldTest
	{
	protected:
		UCineCameraComponent* SpawnCamera(const FVector& Location = FVector::ZeroVector)
		{
			ACineCameraActor* Actor = Spawn<ACineCameraActor>(Location);
			return Actor ? Actor->GetCineCameraComponent() : nullptr;
		}

		/** The field of view a lens of FocalLength mm gives on a sensor SensorWidth mm wide, in degrees. */
		static double ExpectedFieldOfView(double SensorWidth, double FocalLength)
		{
			return FMath::RadiansToDegrees(2.0 * FMath::Atan(SensorWidth / (2.0 * FocalLength)));
		}
	};
} // namespace

TEST_F(FCineCameraTest, ANewCameraHasTheEngineDefaults)
{
	UCineCameraComponent* Camera = SpawnCamera();
	ASSERT_NE(Camera, nullptr);
	// The "16:9 Digital Film" filmback and the "Universal Zoom" lens at 35 mm and f/2.8.
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorWidth, 23.76f);
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorHeight, 13.365f);
	EXPECT_NEAR(Camera->Filmback.SensorAspectRatio, 16.0 / 9.0, 1e-4);
	EXPECT_FLOAT_EQ(Camera->LensSettings.MinFocalLength, 4.f);
	EXPECT_FLOAT_EQ(Camera->LensSettings.MaxFocalLength, 1000.f);
	EXPECT_FLOAT_EQ(Camera->LensSettings.MinFStop, 1.2f);
	EXPECT_FLOAT_EQ(Camera->LensSettings.MaxFStop, 22.f);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 35.f);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 2.8f);
	EXPECT_NEAR(Camera->CurrentHorizontalFOV, 37.4974, 1e-3);
	EXPECT_FLOAT_EQ(Camera->FieldOfView, Camera->CurrentHorizontalFOV);
	EXPECT_NEAR(Camera->AspectRatio, 16.0 / 9.0, 1e-4);
	EXPECT_TRUE(Camera->bConstrainAspectRatio);
	EXPECT_EQ(Camera->FocusSettings.FocusMethod, ECameraFocusMethod::Manual);
	EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, 100000.f);
	EXPECT_FLOAT_EQ(Camera->CurrentFocusDistance, 100000.f);
	EXPECT_TRUE(Camera->bTickInEditor);
	EXPECT_TRUE(Camera->PrimaryComponentTick.bCanEverTick);
	EXPECT_EQ(Camera->GetFilmbackPresetName(), FString(TEXT("16:9 Digital Film")));
	EXPECT_EQ(Camera->GetDefaultFilmbackPresetName(), FString(TEXT("16:9 Digital Film")));
	EXPECT_EQ(Camera->GetLensPresetName(), FString(TEXT("Universal Zoom")));
}

TEST_F(FCineCameraTest, TheFieldOfViewFollowsTheFocalLengthAndTheSensorWidth)
{
	UCineCameraComponent* Camera = SpawnCamera();
	Camera->SetCurrentFocalLength(50.f);
	EXPECT_NEAR(Camera->GetHorizontalFieldOfView(), ExpectedFieldOfView(23.76, 50.0), 1e-3);
	EXPECT_NEAR(Camera->FieldOfView, ExpectedFieldOfView(23.76, 50.0), 1e-3);

	FCameraFilmbackSettings FullFrame;
	FullFrame.SensorWidth = 36.f;
	FullFrame.SensorHeight = 24.f;
	Camera->SetFilmback(FullFrame);
	EXPECT_NEAR(Camera->CurrentHorizontalFOV, 39.5978, 1e-3);
	EXPECT_NEAR(Camera->FieldOfView, 39.5978, 1e-3);
	EXPECT_NEAR(Camera->GetVerticalFieldOfView(), ExpectedFieldOfView(24.0, 50.0), 1e-3);
	EXPECT_NEAR(Camera->AspectRatio, 1.5, 1e-5);
	EXPECT_NEAR(Camera->Filmback.SensorAspectRatio, 1.5, 1e-5);

	// Setting the field of view directly does not change it: it follows the lens.
	Camera->SetFieldOfView(90.f);
	EXPECT_NEAR(Camera->FieldOfView, 39.5978, 1e-3);
}

TEST_F(FCineCameraTest, FocalLengthAndApertureStayWithinTheLens)
{
	UCineCameraComponent* Camera = SpawnCamera();
	Camera->SetCurrentFocalLength(2000.f);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 1000.f);
	Camera->SetCurrentFocalLength(1.f);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 4.f);
	Camera->SetCurrentAperture(0.5f);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 1.2f);

	FCameraLensSettings Prime;
	Prime.MinFocalLength = 50.f;
	Prime.MaxFocalLength = 50.f;
	Prime.MinFStop = 1.8f;
	Prime.MaxFStop = 16.f;
	Camera->SetLensSettings(Prime);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 50.f);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 1.8f);
	EXPECT_EQ(Camera->GetLensPresetName(), FString());
}

TEST_F(FCineCameraTest, PresetsAreFoundByName)
{
	UCineCameraComponent* Camera = SpawnCamera();
	Camera->SetFilmbackPresetByName(TEXT("16:9 DSLR"));
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorWidth, 36.f);
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorHeight, 20.25f);
	EXPECT_EQ(Camera->GetFilmbackPresetName(), FString(TEXT("16:9 DSLR")));
	// An unknown preset changes nothing.
	Camera->SetFilmbackPresetByName(TEXT("No Such Sensor"));
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorWidth, 36.f);
	EXPECT_GE(UCineCameraComponent::GetFilmbackPresetsCopy().Num(), 2);
	EXPECT_GE(UCineCameraComponent::GetLensPresetsCopy().Num(), 1);
}

TEST_F(FCineCameraTest, ValuesWrittenDirectlyTakeEffectWhenTheCameraTicksInTheEditor)
{
	UCineCameraComponent* Camera = SpawnCamera();
	Camera->CurrentFocalLength = 24.f;
	Camera->Filmback.SensorWidth = 36.f;
	Camera->Filmback.SensorHeight = 24.f;
	EXPECT_NEAR(Camera->FieldOfView, 37.4974, 1e-3);
	World->Tick(LEVELTICK_ViewportsOnly, 0.1f);
	EXPECT_NEAR(Camera->FieldOfView, ExpectedFieldOfView(36.0, 24.0), 1e-3);
	EXPECT_NEAR(Camera->CurrentHorizontalFOV, ExpectedFieldOfView(36.0, 24.0), 1e-3);
	EXPECT_NEAR(Camera->AspectRatio, 1.5, 1e-5);
}

TEST_F(FCineCameraTest, FocusDistanceFollowsTheFocusSettings)
{
	UCineCameraComponent* Camera = SpawnCamera();
	FCameraFocusSettings Manual;
	Manual.ManualFocusDistance = 250.f;
	Manual.FocusOffset = 10.f;
	Camera->SetFocusSettings(Manual);
	EXPECT_FLOAT_EQ(Camera->CurrentFocusDistance, 260.f);

	// The lens cannot focus closer than its minimum distance (15 mm = 1.5 world units).
	Manual.ManualFocusDistance = 0.f;
	Manual.FocusOffset = 0.f;
	Camera->SetFocusSettings(Manual);
	EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, 1.5f);
	EXPECT_FLOAT_EQ(Camera->CurrentFocusDistance, 1.5f);

	AEngineTestActor* Subject = Spawn<AEngineTestActor>(FVector(500.0, 30.0, 0.0));
	FCameraFocusSettings Tracking;
	Tracking.FocusMethod = ECameraFocusMethod::Tracking;
	Tracking.TrackingFocusSettings.ActorToTrack = Subject;
	Camera->SetFocusSettings(Tracking);
	// Focus is measured along the view direction (+X here).
	EXPECT_NEAR(Camera->CurrentFocusDistance, 500.f, 1e-3);

	FCameraFocusSettings Disabled;
	Disabled.FocusMethod = ECameraFocusMethod::Disable;
	Camera->SetFocusSettings(Disabled);
	EXPECT_FLOAT_EQ(Camera->CurrentFocusDistance, 0.f);
}

TEST_F(FCineCameraTest, TheCineCameraActorsCameraComponentIsACineCameraComponent)
{
	ACineCameraActor* Actor = Spawn<ACineCameraActor>(FVector(0.0, 0.0, 170.0));
	ASSERT_NE(Actor, nullptr);
	UCameraComponent* CameraComponent = Actor->GetCameraComponent();
	ASSERT_NE(CameraComponent, nullptr);
	EXPECT_TRUE(CameraComponent->IsA<UCineCameraComponent>());
	EXPECT_EQ(Actor->GetCineCameraComponent(), CameraComponent);
	EXPECT_EQ(CameraComponent->GetName(), FString(TEXT("CameraComponent")));
	EXPECT_EQ(CameraComponent->GetAttachParent(), Actor->GetRootComponent());
	EXPECT_TRUE(NearlyEqual(CameraComponent->GetComponentLocation(), FVector(0.0, 0.0, 170.0)));

	Spawn<ACameraActor>();
	int32 CineCameras = 0;
	for (TActorIterator<ACineCameraActor> It(World); It; ++It)
	{
		++CineCameras;
	}
	int32 Cameras = 0;
	for (TActorIterator<ACameraActor> It(World); It; ++It)
	{
		++Cameras;
	}
	EXPECT_EQ(CineCameras, 1);
	EXPECT_EQ(Cameras, 2);
	EXPECT_EQ(Actor->GetDefaultActorLabel(), FString(TEXT("CineCameraActor")));
}

TEST_F(FCineCameraTest, PostProcessMaterialsAreReflectedAndKeptAlive)
{
	UCineCameraComponent* Camera = SpawnCamera();
	UObject* Material = NewObject<UEngineTestTickComponent>(GetTransientPackage(), TEXT("StandInMaterial"));
	TWeakObjectPtr<UObject> WeakMaterial(Material);
	Camera->PostProcessSettings.WeightedBlendables.Array.Add(FWeightedBlendable(1.0f, Material));
	ASSERT_EQ(Camera->PostProcessSettings.WeightedBlendables.Array.Num(), 1);
	EXPECT_FLOAT_EQ(Camera->PostProcessSettings.WeightedBlendables.Array[0].Weight, 1.0f);

	// The settings are a reflected property, through which the collector sees the material.
	EXPECT_NE(Camera->GetClass()->FindPropertyByName(TEXT("PostProcessSettings")), nullptr);
	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
	EXPECT_TRUE(WeakMaterial.IsValid());

	Camera->AddOrUpdateBlendable(Material, 0.5f);
	EXPECT_EQ(Camera->PostProcessSettings.WeightedBlendables.Array.Num(), 1);
	EXPECT_FLOAT_EQ(Camera->PostProcessSettings.WeightedBlendables.Array[0].Weight, 0.5f);
	Camera->RemoveBlendable(Material);
	EXPECT_EQ(Camera->PostProcessSettings.WeightedBlendables.Array.Num(), 0);
	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
	EXPECT_FALSE(WeakMaterial.IsValid());

	FWeightedBlendable Unset;
	EXPECT_FLOAT_EQ(Unset.Weight, -1.f);
	EXPECT_EQ(Unset.Object, nullptr);
}

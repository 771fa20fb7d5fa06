// Copyright Orvane. All Rights Reserved.

#include "../LiveLinkComponents/LiveLinkControllerTestFixture.h"
#include "Camera/CameraActor.h"
#include "Camera/CameraComponent.h"
#include "CineCameraActor.h"
#include "CineCameraComponent.h"
#include "Controllers/LiveLinkTransformController.h"
#include "LiveLinkCameraController.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"

namespace
{
	/** A camera subject driving a cine camera actor placed in the editor world. */
	class FCameraControllerTest : public FLiveLinkControllerTest
	{
	protected:
		void SetUp() override
		{
			FLiveLinkControllerTest::SetUp();
			if (HasFatalFailure())
			{
				return;
			}
			Actor = World->SpawnActor<ACineCameraActor>();
			ASSERT_NE(Actor, nullptr);
			Camera = Actor->GetCineCameraComponent();
			ASSERT_NE(Camera, nullptr);

			// A zoom lens wide enough for every value the tests send, so the camera's own clamping never decides.
			FCameraLensSettings Lens = Camera->LensSettings;
			Lens.MinFocalLength = 10.0f;
			Lens.MaxFocalLength = 210.0f;
			Lens.MinFStop = 1.4f;
			Lens.MaxFStop = 22.0f;
			Lens.MinimumFocusDistance = 200.0f;
			Camera->SetLensSettings(Lens);
			Camera->SetCurrentFocalLength(InitialFocalLength);
			Camera->SetCurrentAperture(InitialAperture);
			Camera->FocusSettings.ManualFocusDistance = InitialFocusDistance;
			InitialFilmback = Camera->Filmback;
		}

		/** A subject that sends focal length, aperture and focus distance and declares its sensor. */
		static FLiveLinkCameraStaticData FizStaticData()
		{
			FLiveLinkCameraStaticData StaticData;
			StaticData.bIsFocalLengthSupported = true;
			StaticData.bIsApertureSupported = true;
			StaticData.bIsFocusDistanceSupported = true;
			StaticData.FilmBackWidth = 23.76f;
			StaticData.FilmBackHeight = 13.365f;
			return StaticData;
		}

		FLiveLinkCameraFrameData CameraFrame(float FocalLength, float Aperture, float FocusDistance) const
		{
			FLiveLinkCameraFrameData Frame;
			Frame.Transform = FTransform(TrackedRotation, TrackedLocation);
			Frame.FocalLength = FocalLength;
			Frame.Aperture = Aperture;
			Frame.FocusDistance = FocusDistance;
			return Frame;
		}

		ULiveLinkCameraController* CameraControllerOf(ULiveLinkComponentController* Controller) const
		{
			const TObjectPtr<ULiveLinkControllerBase>* Found =
				Controller->ControllerMap.Find(ULiveLinkCameraRole::StaticClass());
			return Found ? Cast<ULiveLinkCameraController>(Found->Get()) : nullptr;
		}

		void ExpectLensUntouched() const
		{
			EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, InitialFocalLength);
			EXPECT_FLOAT_EQ(Camera->CurrentAperture, InitialAperture);
			EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, InitialFocusDistance);
		}

		ACineCameraActor* Actor = nullptr;
		UCineCameraComponent* Camera = nullptr;
		FCameraFilmbackSettings InitialFilmback;

		static constexpr float InitialFocalLength = 24.0f;
		static constexpr float InitialAperture = 2.0f;
		static constexpr float InitialFocusDistance = 1000.0f;
		const FVector TrackedLocation = FVector(120.0, -40.0, 250.0);
		const FRotator TrackedRotation = FRotator(-10.0, 45.0, 0.0);
	};
} // namespace

TEST_F(FCameraControllerTest, DefaultsAreTheEngines)
{
	const ULiveLinkCameraController* Controller = GetDefault<ULiveLinkCameraController>();
	EXPECT_FALSE(Controller->bUseCameraRange);
	EXPECT_TRUE(Controller->bShouldUpdateVisualComponentOnChange);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyFieldOfView);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyAspectRatio);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyFocalLength);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyProjectionMode);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyFilmBack);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyAperture);
	EXPECT_TRUE(Controller->UpdateFlags.bApplyFocusDistance);
	EXPECT_EQ(Controller->GetDesiredComponentClass().Get(), UCameraComponent::StaticClass());
}

TEST_F(FCameraControllerTest, TheCameraRoleGetsATransformAndACameraController)
{
	EXPECT_EQ(ULiveLinkControllerBase::GetControllerForRole(ULiveLinkCameraRole::StaticClass()).Get(),
		ULiveLinkCameraController::StaticClass());
	EXPECT_EQ(ULiveLinkControllerBase::GetControllerForRole(ULiveLinkTransformRole::StaticClass()).Get(),
		ULiveLinkTransformController::StaticClass());

	ULiveLinkComponentController* Controller = AddController(Actor, TEXT("Roles"), ULiveLinkCameraRole::StaticClass());
	ASSERT_EQ(Controller->ControllerMap.Num(), 2);
	EXPECT_EQ(Controller->GetControllerClassForRoleClass(ULiveLinkCameraRole::StaticClass()).Get(),
		ULiveLinkCameraController::StaticClass());
	EXPECT_EQ(Controller->GetControllerClassForRoleClass(ULiveLinkTransformRole::StaticClass()).Get(),
		ULiveLinkTransformController::StaticClass());
	// The transform goes on the actor's root, the lens on its camera.
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkTransformRole::StaticClass()), Actor->GetRootComponent());
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkCameraRole::StaticClass()), Camera);

	// The transform controller cannot take the camera role's place.
	ExpectWarning(TEXT("controller class 'LiveLinkTransformController' cannot drive that role"));
	Controller->SetControllerClassForRole(
		ULiveLinkCameraRole::StaticClass(), ULiveLinkTransformController::StaticClass());
	EXPECT_EQ(Controller->GetControllerClassForRoleClass(ULiveLinkCameraRole::StaticClass()).Get(),
		ULiveLinkCameraController::StaticClass());
}

TEST_F(FCameraControllerTest, ACameraSubjectDrivesTheCineCameraInTheEditorWorld)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("Tracked"), ULiveLinkCameraRole::StaticClass());
	ASSERT_TRUE(Controller->bUpdateInEditor);
	Camera->FocusSettings.FocusMethod = ECameraFocusMethod::DoNotOverride;

	PushStatic(TEXT("Tracked"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	PushFrame(TEXT("Tracked"), CameraFrame(35.0f, 4.0f, 350.0f));
	Frames(3);

	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), TrackedLocation));
	EXPECT_TRUE(RotatorsNear(Camera->GetComponentRotation(), TrackedRotation));
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 35.0f);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 4.0f);
	EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, 350.0f);
	EXPECT_EQ(Camera->FocusSettings.FocusMethod, ECameraFocusMethod::Manual);
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorWidth, 23.76f);
	EXPECT_FLOAT_EQ(Camera->Filmback.SensorHeight, 13.365f);

	// The next frame moves the camera and turns the lens.
	PushFrame(TEXT("Tracked"), CameraFrame(85.0f, 8.0f, 1200.0f));
	Frames(2);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 85.0f);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 8.0f);
	EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, 1200.0f);
}

TEST_F(FCameraControllerTest, LensValuesOfOneOrLessAreNotAppliedWithoutACameraRange)
{
	// Down to one millimetre, so that the camera itself would accept every value sent here.
	FCameraLensSettings Lens = Camera->LensSettings;
	Lens.MinFocalLength = 0.1f;
	Lens.MinFStop = 0.1f;
	Lens.MinimumFocusDistance = 1.0f;
	Camera->SetLensSettings(Lens);
	AddController(Actor, TEXT("Normalized"), ULiveLinkCameraRole::StaticClass());

	PushStatic(TEXT("Normalized"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	PushFrame(TEXT("Normalized"), CameraFrame(0.5f, 1.0f, 0.8f));
	Frames(2);
	ExpectLensUntouched();

	// Just above one is a physical value again.
	PushFrame(TEXT("Normalized"), CameraFrame(1.5f, 1.1f, 1.25f));
	Frames(2);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 1.5f);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 1.1f);
	EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, 1.25f);
}

TEST_F(FCameraControllerTest, TheCameraRangeTurnsNormalizedInputsIntoTheLensLimits)
{
	ULiveLinkComponentController* Controller = AddController(Actor, TEXT("Ranged"), ULiveLinkCameraRole::StaticClass());
	ULiveLinkCameraController* CameraController = CameraControllerOf(Controller);
	ASSERT_NE(CameraController, nullptr);
	CameraController->bUseCameraRange = true;

	PushStatic(TEXT("Ranged"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	PushFrame(TEXT("Ranged"), CameraFrame(0.5f, 0.25f, 0.1f));
	Frames(2);
	// Focal length 10..210 mm, f/1.4..f/22, focus from the lens's 200 mm (20 cm) to 1 km.
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 110.0f);
	EXPECT_NEAR(Camera->CurrentAperture, 1.4f + 0.25f * (22.0f - 1.4f), 1e-4f);
	EXPECT_NEAR(Camera->FocusSettings.ManualFocusDistance, 20.0f + 0.1f * (100000.0f - 20.0f), 0.01f);

	// Values above one are not special in this mode: they are still read as fractions of the range.
	PushFrame(TEXT("Ranged"), CameraFrame(1.0f, 0.0f, 0.0f));
	Frames(2);
	EXPECT_NEAR(Camera->CurrentFocalLength, 210.0f, 1e-4f);
	EXPECT_NEAR(Camera->CurrentAperture, 1.4f, 1e-4f);
	EXPECT_NEAR(Camera->FocusSettings.ManualFocusDistance, 20.0f, 0.01f);
}

TEST_F(FCameraControllerTest, WhatTheSubjectDoesNotSupportIsLeftAlone)
{
	Camera->FocusSettings.FocusMethod = ECameraFocusMethod::Tracking;
	const float InitialFieldOfView = Camera->FieldOfView;
	AddController(Actor, TEXT("Bare"), ULiveLinkCameraRole::StaticClass());

	// Every lens flag off and no sensor size: only the transform is the subject's.
	PushStatic(TEXT("Bare"), ULiveLinkCameraRole::StaticClass(), FLiveLinkCameraStaticData());
	FLiveLinkCameraFrameData Frame = CameraFrame(35.0f, 4.0f, 350.0f);
	Frame.FieldOfView = 20.0f;
	PushFrame(TEXT("Bare"), Frame);
	Frames(2);

	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), TrackedLocation));
	ExpectLensUntouched();
	EXPECT_EQ(Camera->Filmback, InitialFilmback);
	EXPECT_EQ(Camera->FocusSettings.FocusMethod, ECameraFocusMethod::Tracking);
	EXPECT_FLOAT_EQ(Camera->FieldOfView, InitialFieldOfView);
}

TEST_F(FCameraControllerTest, UpdateFlagsKeepSupportedValuesOffTheCamera)
{
	Camera->FocusSettings.FocusMethod = ECameraFocusMethod::Tracking;
	ULiveLinkComponentController* Controller = AddController(Actor, TEXT("Flags"), ULiveLinkCameraRole::StaticClass());
	ULiveLinkCameraController* CameraController = CameraControllerOf(Controller);
	ASSERT_NE(CameraController, nullptr);
	CameraController->UpdateFlags.bApplyFocalLength = false;
	CameraController->UpdateFlags.bApplyAperture = false;
	CameraController->UpdateFlags.bApplyFocusDistance = false;
	CameraController->UpdateFlags.bApplyFilmBack = false;

	PushStatic(TEXT("Flags"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	PushFrame(TEXT("Flags"), CameraFrame(35.0f, 4.0f, 350.0f));
	Frames(2);
	ExpectLensUntouched();
	EXPECT_EQ(Camera->Filmback, InitialFilmback);
	EXPECT_EQ(Camera->FocusSettings.FocusMethod, ECameraFocusMethod::Tracking);

	// Each flag on its own lets its value through.
	CameraController->UpdateFlags.bApplyAperture = true;
	Frames(1);
	EXPECT_FLOAT_EQ(Camera->CurrentAperture, 4.0f);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, InitialFocalLength);
	EXPECT_FLOAT_EQ(Camera->FocusSettings.ManualFocusDistance, InitialFocusDistance);
}

TEST_F(FCameraControllerTest, ASubjectWithoutDepthOfFieldTurnsFocusOff)
{
	AddController(Actor, TEXT("NoDepthOfField"), ULiveLinkCameraRole::StaticClass());
	FLiveLinkCameraStaticData StaticData = FizStaticData();
	StaticData.bIsDepthOfFieldSupported = false;
	PushStatic(TEXT("NoDepthOfField"), ULiveLinkCameraRole::StaticClass(), StaticData);
	PushFrame(TEXT("NoDepthOfField"), CameraFrame(35.0f, 4.0f, 350.0f));
	Frames(2);
	EXPECT_EQ(Camera->FocusSettings.FocusMethod, ECameraFocusMethod::Disable);
	// The rest of the lens still follows the subject.
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 35.0f);
}

TEST_F(FCameraControllerTest, APlainCameraTakesFieldOfViewAspectRatioAndProjection)
{
	ACameraActor* PlainActor = World->SpawnActor<ACameraActor>();
	ASSERT_NE(PlainActor, nullptr);
	UCameraComponent* PlainCamera = PlainActor->GetCameraComponent();
	ULiveLinkComponentController* Controller =
		AddController(PlainActor, TEXT("Plain"), ULiveLinkCameraRole::StaticClass());
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkCameraRole::StaticClass()), PlainCamera);

	FLiveLinkCameraStaticData StaticData;
	StaticData.bIsFieldOfViewSupported = true;
	StaticData.bIsAspectRatioSupported = true;
	StaticData.bIsProjectionModeSupported = true;
	PushStatic(TEXT("Plain"), ULiveLinkCameraRole::StaticClass(), StaticData);
	FLiveLinkCameraFrameData Frame = CameraFrame(35.0f, 4.0f, 350.0f);
	Frame.FieldOfView = 62.5f;
	Frame.AspectRatio = 2.39f;
	Frame.ProjectionMode = ELiveLinkCameraProjectionMode::Orthographic;
	PushFrame(TEXT("Plain"), Frame);
	Frames(2);

	EXPECT_FLOAT_EQ(PlainCamera->FieldOfView, 62.5f);
	EXPECT_FLOAT_EQ(PlainCamera->AspectRatio, 2.39f);
	EXPECT_EQ(PlainCamera->ProjectionMode, ECameraProjectionMode::Orthographic);
	EXPECT_TRUE(VectorsNear(PlainCamera->GetComponentLocation(), TrackedLocation));
}

TEST_F(FCameraControllerTest, APlainCameraKeepsWhatTheSubjectDoesNotSupport)
{
	ACameraActor* PlainActor = World->SpawnActor<ACameraActor>();
	ASSERT_NE(PlainActor, nullptr);
	UCameraComponent* PlainCamera = PlainActor->GetCameraComponent();
	PlainCamera->SetFieldOfView(75.0f);
	PlainCamera->SetAspectRatio(1.5f);
	AddController(PlainActor, TEXT("PlainBare"), ULiveLinkCameraRole::StaticClass());

	PushStatic(TEXT("PlainBare"), ULiveLinkCameraRole::StaticClass(), FLiveLinkCameraStaticData());
	FLiveLinkCameraFrameData Frame = CameraFrame(35.0f, 4.0f, 350.0f);
	Frame.FieldOfView = 62.5f;
	Frame.AspectRatio = 2.39f;
	Frame.ProjectionMode = ELiveLinkCameraProjectionMode::Orthographic;
	PushFrame(TEXT("PlainBare"), Frame);
	Frames(2);

	EXPECT_FLOAT_EQ(PlainCamera->FieldOfView, 75.0f);
	EXPECT_FLOAT_EQ(PlainCamera->AspectRatio, 1.5f);
	EXPECT_EQ(PlainCamera->ProjectionMode, ECameraProjectionMode::Perspective);
}

TEST_F(FCameraControllerTest, NothingChangesInTheEditorWorldWithoutUpdateInEditor)
{
	const FVector PlacedAt = Camera->GetComponentLocation();
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("EditorOff"), ULiveLinkCameraRole::StaticClass());
	Controller->bUpdateInEditor = false;

	PushStatic(TEXT("EditorOff"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	PushFrame(TEXT("EditorOff"), CameraFrame(35.0f, 4.0f, 350.0f));
	Frames(3);
	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), PlacedAt));
	ExpectLensUntouched();
	EXPECT_EQ(Camera->Filmback, InitialFilmback);

	Controller->bUpdateInEditor = true;
	Frames(1);
	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), TrackedLocation));
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 35.0f);
}

TEST_F(FCameraControllerTest, ASubjectWithoutFramesChangesNothing)
{
	const FVector PlacedAt = Camera->GetComponentLocation();
	AddController(Actor, TEXT("Silent"), ULiveLinkCameraRole::StaticClass());
	PushStatic(TEXT("Silent"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	Frames(3);
	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), PlacedAt));
	ExpectLensUntouched();
	EXPECT_EQ(Camera->Filmback, InitialFilmback);
}

TEST_F(FCameraControllerTest, ChangingTheRoleRebuildsTheControllerMap)
{
	ULiveLinkComponentController* Controller = AddController(Actor, TEXT("Switch"), ULiveLinkCameraRole::StaticClass());
	ASSERT_EQ(Controller->ControllerMap.Num(), 2);
	ULiveLinkControllerBase* TransformController =
		Controller->ControllerMap.FindRef(ULiveLinkTransformRole::StaticClass());
	ASSERT_NE(TransformController, nullptr);

	// Down to the transform role: the camera controller goes, the transform controller stays.
	Controller->SetSubjectRepresentation(
		FLiveLinkSubjectRepresentation{FLiveLinkSubjectName(TEXT("Switch")), ULiveLinkTransformRole::StaticClass()});
	ASSERT_EQ(Controller->ControllerMap.Num(), 1);
	EXPECT_FALSE(Controller->ControllerMap.Contains(ULiveLinkCameraRole::StaticClass()));
	EXPECT_EQ(Controller->ControllerMap.FindRef(ULiveLinkTransformRole::StaticClass()), TransformController);
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkCameraRole::StaticClass()), nullptr);

	// A camera subject read as a transform moves the camera but leaves its lens alone.
	PushStatic(TEXT("Switch"), ULiveLinkCameraRole::StaticClass(), FizStaticData());
	PushFrame(TEXT("Switch"), CameraFrame(35.0f, 4.0f, 350.0f));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), TrackedLocation));
	ExpectLensUntouched();

	// Back to the camera role, written into the property and announced: the camera controller returns.
	Controller->SubjectRepresentation.Role = ULiveLinkCameraRole::StaticClass();
	EXPECT_TRUE(Controller->IsControllerMapOutdated());
	Controller->OnSubjectRoleChanged();
	EXPECT_FALSE(Controller->IsControllerMapOutdated());
	ASSERT_EQ(Controller->ControllerMap.Num(), 2);
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkCameraRole::StaticClass()), Camera);
	Frames(1);
	EXPECT_FLOAT_EQ(Camera->CurrentFocalLength, 35.0f);
}

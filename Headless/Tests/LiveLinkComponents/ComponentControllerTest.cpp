// Copyright Orvane. All Rights Reserved.

#include "Camera/CameraActor.h"
#include "Camera/CameraComponent.h"
#include "Controllers/LiveLinkTransformController.h"
#include "LiveLinkControllerBase.h"
#include "LiveLinkControllerTestFixture.h"
#include "Roles/LiveLinkCameraRole.h"
#include "UObject/UObjectGlobals.h"

namespace
{
	/** A transform subject on a camera actor placed in the editor world. */
	class FComponentControllerTest : public FLiveLinkControllerTest
	{
	protected:
		void SetUp() override
		{
			FLiveLinkControllerTest::SetUp();
			if (HasFatalFailure())
			{
				return;
			}
			Actor = World->SpawnActor<ACameraActor>();
			ASSERT_NE(Actor, nullptr);
			Root = Actor->GetRootComponent();
			ASSERT_NE(Root, nullptr);
		}

		ULiveLinkTransformController* TransformControllerOf(ULiveLinkComponentController* Controller) const
		{
			const TObjectPtr<ULiveLinkControllerBase>* Found =
				Controller->ControllerMap.Find(ULiveLinkTransformRole::StaticClass());
			return Found ? Cast<ULiveLinkTransformController>(Found->Get()) : nullptr;
		}

		ACameraActor* Actor = nullptr;
		USceneComponent* Root = nullptr;

		const FVector TrackedLocation = FVector(120.0, -40.0, 250.0);
		const FRotator TrackedRotation = FRotator(-10.0, 45.0, 5.0);
		const FVector TrackedScale = FVector(2.0, 3.0, 4.0);

		FTransform TrackedTransform() const { return FTransform(TrackedRotation, TrackedLocation, TrackedScale); }
	};
} // namespace

TEST_F(FComponentControllerTest, DefaultsAreTheEngines)
{
	const ULiveLinkComponentController* Controller = GetDefault<ULiveLinkComponentController>();
	EXPECT_TRUE(Controller->bUpdateInEditor);
	EXPECT_TRUE(Controller->bEvaluateLiveLink);
	EXPECT_FALSE(Controller->bUpdateInPreviewEditor);
	EXPECT_TRUE(Controller->bDisableEvaluateLiveLinkWhenSpawnable);
	EXPECT_TRUE(Controller->bTickInEditor);
	EXPECT_TRUE(Controller->PrimaryComponentTick.bCanEverTick);
	EXPECT_TRUE(Controller->ControllerMap.IsEmpty());

	const FLiveLinkTransformControllerData Data;
	EXPECT_FALSE(Data.bWorldTransform);
	EXPECT_TRUE(Data.bUseLocation);
	EXPECT_TRUE(Data.bUseRotation);
	EXPECT_TRUE(Data.bUseScale);
	EXPECT_FALSE(Data.bSweep);
	EXPECT_TRUE(Data.bTeleport);
}

TEST_F(FComponentControllerTest, TheTransformControllerIsTheControllerOfExactlyTheTransformRole)
{
	EXPECT_EQ(ULiveLinkControllerBase::GetControllerForRole(ULiveLinkTransformRole::StaticClass()).Get(),
		ULiveLinkTransformController::StaticClass());
	const TArray<TSubclassOf<ULiveLinkControllerBase>> Controllers =
		ULiveLinkControllerBase::GetControllersForRole(ULiveLinkTransformRole::StaticClass());
	ASSERT_EQ(Controllers.Num(), 1);
	EXPECT_EQ(Controllers[0].Get(), ULiveLinkTransformController::StaticClass());

	// The camera role has its own controller (in another plug-in, not loaded here), the abstract base none.
	EXPECT_EQ(ULiveLinkControllerBase::GetControllerForRole(ULiveLinkCameraRole::StaticClass()).Get(), nullptr);
	EXPECT_TRUE(ULiveLinkControllerBase::GetControllersForRole(ULiveLinkRole::StaticClass()).IsEmpty());
	EXPECT_TRUE(ULiveLinkControllerBase::GetControllersForRole(nullptr).IsEmpty());
}

TEST_F(FComponentControllerTest, ATransformSubjectMovesTheRootComponentInTheEditorWorld)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("MovesRoot"), ULiveLinkTransformRole::StaticClass());
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkTransformRole::StaticClass()), Root);
	int32 Updates = 0;
	Controller->OnLiveLinkUpdated.AddLambda(
		[&Updates](float DeltaTime)
		{
			EXPECT_FLOAT_EQ(DeltaTime, 1.0f / 30.0f);
			++Updates;
		});

	PushStatic(TEXT("MovesRoot"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	PushFrame(TEXT("MovesRoot"), MakeTransformFrame(TrackedTransform()));
	Frames(3);

	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), TrackedLocation));
	EXPECT_TRUE(RotatorsNear(Root->GetComponentRotation(), TrackedRotation));
	// The subject's static data leaves scale unsupported by default: the root keeps its own.
	EXPECT_TRUE(VectorsNear(Root->GetComponentScale(), FVector::OneVector));
	// The camera hangs from the root and follows it.
	EXPECT_TRUE(VectorsNear(Actor->GetCameraComponent()->GetComponentLocation(), TrackedLocation));
	EXPECT_EQ(Updates, 3);

	// A newer frame moves it on.
	const FVector NextLocation(-300.0, 10.0, 90.0);
	PushFrame(TEXT("MovesRoot"), MakeTransformFrame(FTransform(FRotator(0.0, -90.0, 0.0), NextLocation)));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), NextLocation));
	EXPECT_TRUE(RotatorsNear(Root->GetComponentRotation(), FRotator(0.0, -90.0, 0.0)));
}

TEST_F(FComponentControllerTest, ScaleIsAppliedWhenTheSubjectSupportsItAndTheControllerWantsIt)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("Scaled"), ULiveLinkTransformRole::StaticClass());
	FLiveLinkTransformStaticData StaticData;
	StaticData.bIsScaleSupported = true;
	PushStatic(TEXT("Scaled"), ULiveLinkTransformRole::StaticClass(), StaticData);
	PushFrame(TEXT("Scaled"), MakeTransformFrame(TrackedTransform()));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentScale(), TrackedScale));

	Root->SetRelativeScale3D(FVector::OneVector);
	ULiveLinkTransformController* TransformController = TransformControllerOf(Controller);
	ASSERT_NE(TransformController, nullptr);
	TransformController->TransformData.bUseScale = false;
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentScale(), FVector::OneVector));
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), TrackedLocation));
}

TEST_F(FComponentControllerTest, PartsTheSubjectDoesNotSupportKeepTheComponentsValues)
{
	const FVector PlacedAt(7.0, 8.0, 9.0);
	const FRotator PlacedRotation(0.0, 30.0, 0.0);
	Root->SetWorldLocationAndRotation(PlacedAt, PlacedRotation);
	AddController(Actor, TEXT("RotationOnly"), ULiveLinkTransformRole::StaticClass());

	FLiveLinkTransformStaticData StaticData;
	StaticData.bIsLocationSupported = false;
	PushStatic(TEXT("RotationOnly"), ULiveLinkTransformRole::StaticClass(), StaticData);
	PushFrame(TEXT("RotationOnly"), MakeTransformFrame(TrackedTransform()));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), PlacedAt));
	EXPECT_TRUE(RotatorsNear(Root->GetComponentRotation(), TrackedRotation));
}

TEST_F(FComponentControllerTest, LocationAndRotationCanBeSwitchedOffOnTheController)
{
	const FVector PlacedAt(7.0, 8.0, 9.0);
	Root->SetWorldLocation(PlacedAt);
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("LocationOff"), ULiveLinkTransformRole::StaticClass());
	ULiveLinkTransformController* TransformController = TransformControllerOf(Controller);
	ASSERT_NE(TransformController, nullptr);
	TransformController->TransformData.bUseLocation = false;
	TransformController->TransformData.bUseRotation = false;

	PushStatic(TEXT("LocationOff"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	PushFrame(TEXT("LocationOff"), MakeTransformFrame(TrackedTransform()));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), PlacedAt));
	EXPECT_TRUE(RotatorsNear(Root->GetComponentRotation(), FRotator::ZeroRotator));

	TransformController->TransformData.bUseRotation = true;
	Frames(1);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), PlacedAt));
	EXPECT_TRUE(RotatorsNear(Root->GetComponentRotation(), TrackedRotation));
}

TEST_F(FComponentControllerTest, AnAttachedComponentIsPlacedRelativeToItsParentOrInTheWorld)
{
	const FVector RootAt(1000.0, 0.0, 0.0);
	Root->SetWorldLocation(RootAt);
	UCameraComponent* Camera = Actor->GetCameraComponent();
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("Attached"), ULiveLinkTransformRole::StaticClass());
	Controller->SetControlledComponent(ULiveLinkTransformRole::StaticClass(), Camera);
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkTransformRole::StaticClass()), Camera);

	PushStatic(TEXT("Attached"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	PushFrame(TEXT("Attached"), MakeTransformFrame(FTransform(TrackedLocation)));
	Frames(2);
	// In its parent's frame by default: the root does not move, the camera sits at the offset from it.
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), RootAt));
	EXPECT_TRUE(VectorsNear(Camera->GetRelativeLocation(), TrackedLocation));
	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), RootAt + TrackedLocation));

	TransformControllerOf(Controller)->TransformData.bWorldTransform = true;
	Frames(1);
	EXPECT_TRUE(VectorsNear(Camera->GetComponentLocation(), TrackedLocation));
	EXPECT_TRUE(VectorsNear(Camera->GetRelativeLocation(), TrackedLocation - RootAt));
}

TEST_F(FComponentControllerTest, NothingMovesInTheEditorWorldWithoutUpdateInEditor)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("EditorOff"), ULiveLinkTransformRole::StaticClass());
	Controller->bUpdateInEditor = false;
	int32 Updates = 0;
	Controller->OnLiveLinkUpdated.AddLambda(
		[&Updates](float)
		{
			++Updates;
		});
	PushStatic(TEXT("EditorOff"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	PushFrame(TEXT("EditorOff"), MakeTransformFrame(TrackedTransform()));
	Frames(3);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), FVector::ZeroVector));
	EXPECT_EQ(Updates, 0);

	// The same setup moves the actor as soon as the editor world is allowed.
	Controller->bUpdateInEditor = true;
	Frames(1);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), TrackedLocation));
	EXPECT_EQ(Updates, 1);
}

TEST_F(FComponentControllerTest, EvaluateLiveLinkPausesTheController)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("Paused"), ULiveLinkTransformRole::StaticClass());
	PushStatic(TEXT("Paused"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	PushFrame(TEXT("Paused"), MakeTransformFrame(FTransform(TrackedLocation)));
	Frames(2);
	ASSERT_TRUE(VectorsNear(Root->GetComponentLocation(), TrackedLocation));

	Controller->bEvaluateLiveLink = false;
	PushFrame(TEXT("Paused"), MakeTransformFrame(FTransform(FVector(5.0, 5.0, 5.0))));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), TrackedLocation));

	Controller->bEvaluateLiveLink = true;
	Frames(1);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), FVector(5.0, 5.0, 5.0)));
}

TEST_F(FComponentControllerTest, ASubjectWithoutFramesChangesNothing)
{
	const FVector PlacedAt(7.0, 8.0, 9.0);
	Root->SetWorldLocation(PlacedAt);
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("NoFrames"), ULiveLinkTransformRole::StaticClass());
	int32 Updates = 0;
	Controller->OnLiveLinkUpdated.AddLambda(
		[&Updates](float)
		{
			++Updates;
		});

	// Static data alone is a subject the client knows but cannot evaluate yet.
	PushStatic(TEXT("NoFrames"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	Frames(3);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), PlacedAt));
	EXPECT_EQ(Updates, 0);

	// A subject the client has never heard of neither.
	Controller->SetSubjectRepresentation(
		FLiveLinkSubjectRepresentation{FLiveLinkSubjectName(TEXT("Nobody")), ULiveLinkTransformRole::StaticClass()});
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), PlacedAt));
	EXPECT_EQ(Updates, 0);
}

TEST_F(FComponentControllerTest, TheControllerMapFollowsTheSubjectRole)
{
	ULiveLinkComponentController* Controller = NewObject<ULiveLinkComponentController>(Actor);
	int32 MapUpdates = 0;
	Controller->OnControllerMapUpdatedDelegate.AddLambda(
		[&MapUpdates]()
		{
			++MapUpdates;
		});
	EXPECT_TRUE(Controller->ControllerMap.IsEmpty());
	EXPECT_FALSE(Controller->IsControllerMapOutdated());

	Controller->SetSubjectRepresentation(
		FLiveLinkSubjectRepresentation{FLiveLinkSubjectName(TEXT("Mapped")), ULiveLinkTransformRole::StaticClass()});
	EXPECT_EQ(MapUpdates, 1);
	ASSERT_EQ(Controller->ControllerMap.Num(), 1);
	ULiveLinkTransformController* TransformController = TransformControllerOf(Controller);
	ASSERT_NE(TransformController, nullptr);
	EXPECT_EQ(TransformController->GetOuter(), Controller);
	EXPECT_EQ(TransformController->GetSelectedSubject().Subject, FLiveLinkSubjectName(TEXT("Mapped")));
	EXPECT_EQ(Controller->GetControllerClassForRoleClass(ULiveLinkTransformRole::StaticClass()).Get(),
		ULiveLinkTransformController::StaticClass());
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkTransformRole::StaticClass()), Root);
	EXPECT_FALSE(Controller->IsControllerMapOutdated());

	// A role changed behind the setter's back leaves the map stale until the change is announced.
	Controller->SubjectRepresentation.Role = nullptr;
	EXPECT_TRUE(Controller->IsControllerMapOutdated());
	Controller->OnSubjectRoleChanged();
	EXPECT_FALSE(Controller->IsControllerMapOutdated());
	EXPECT_TRUE(Controller->ControllerMap.IsEmpty());
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkTransformRole::StaticClass()), nullptr);
	EXPECT_EQ(MapUpdates, 2);

	// Registration catches up with a role written straight into the property.
	Controller->SubjectRepresentation.Role = ULiveLinkTransformRole::StaticClass();
	Controller->RegisterComponent();
	EXPECT_FALSE(Controller->IsControllerMapOutdated());
	EXPECT_NE(TransformControllerOf(Controller), nullptr);

	// Renaming the subject keeps the controller (and its settings) and points it at the new name.
	ULiveLinkTransformController* Kept = TransformControllerOf(Controller);
	Kept->TransformData.bWorldTransform = true;
	Controller->SetSubjectRepresentation(
		FLiveLinkSubjectRepresentation{FLiveLinkSubjectName(TEXT("Renamed")), ULiveLinkTransformRole::StaticClass()});
	EXPECT_EQ(TransformControllerOf(Controller), Kept);
	EXPECT_TRUE(Kept->TransformData.bWorldTransform);
	EXPECT_EQ(Kept->GetSelectedSubject().Subject, FLiveLinkSubjectName(TEXT("Renamed")));
}

TEST_F(FComponentControllerTest, ControllerClassesCanOnlyBeSetForRolesOfTheSubject)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("Classes"), ULiveLinkTransformRole::StaticClass());
	ULiveLinkTransformController* Before = TransformControllerOf(Controller);
	ASSERT_NE(Before, nullptr);

	// Asking for the class it already has keeps the very same controller.
	Controller->SetControllerClassForRole(
		ULiveLinkTransformRole::StaticClass(), ULiveLinkTransformController::StaticClass());
	EXPECT_EQ(TransformControllerOf(Controller), Before);

	// A role outside the subject's hierarchy has no controller to replace.
	ExpectWarning(TEXT("has no controller for role 'LiveLinkCameraRole'"));
	Controller->SetControllerClassForRole(
		ULiveLinkCameraRole::StaticClass(), ULiveLinkTransformController::StaticClass());
	EXPECT_FALSE(Controller->ControllerMap.Contains(ULiveLinkCameraRole::StaticClass()));
	EXPECT_EQ(Controller->ControllerMap.Num(), 1);

	// A class that cannot drive the role is refused, with a warning, and the controller stays.
	ExpectWarning(TEXT("controller class 'LiveLinkControllerBase' cannot drive that role"));
	Controller->SetControllerClassForRole(
		ULiveLinkTransformRole::StaticClass(), ULiveLinkControllerBase::StaticClass());
	EXPECT_EQ(TransformControllerOf(Controller), Before);

	// Clearing the class leaves the role without a controller, which the map reports as outdated.
	Controller->SetControllerClassForRole(ULiveLinkTransformRole::StaticClass(), nullptr);
	EXPECT_EQ(Controller->GetControlledComponent(ULiveLinkTransformRole::StaticClass()), nullptr);
	EXPECT_TRUE(Controller->IsControllerMapOutdated());
	Controller->SetControllerClassForRole(
		ULiveLinkTransformRole::StaticClass(), ULiveLinkTransformController::StaticClass());
	EXPECT_NE(TransformControllerOf(Controller), nullptr);
	EXPECT_NE(TransformControllerOf(Controller), Before);
	EXPECT_FALSE(Controller->IsControllerMapOutdated());
}

TEST_F(FComponentControllerTest, ControllersSurviveGarbageCollectionAndKeepDriving)
{
	ULiveLinkComponentController* Controller =
		AddController(Actor, TEXT("Collected"), ULiveLinkTransformRole::StaticClass());
	const TWeakObjectPtr<ULiveLinkTransformController> TransformController(TransformControllerOf(Controller));
	ASSERT_TRUE(TransformController.IsValid());

	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
	ASSERT_TRUE(TransformController.IsValid());
	EXPECT_EQ(TransformControllerOf(Controller), TransformController.Get());

	PushStatic(TEXT("Collected"), ULiveLinkTransformRole::StaticClass(), FLiveLinkTransformStaticData());
	PushFrame(TEXT("Collected"), MakeTransformFrame(FTransform(TrackedLocation)));
	Frames(2);
	EXPECT_TRUE(VectorsNear(Root->GetComponentLocation(), TrackedLocation));
}

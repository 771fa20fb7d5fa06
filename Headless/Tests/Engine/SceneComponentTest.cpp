// Copyright Orvane. All Rights Reserved.

#include "Camera/CameraActor.h"
#include "Camera/CameraComponent.h"
#include "EngineTestWorld.h"

using EngineTestWorld::FLogRecorder;

namespace
{
	class FSceneComponentTest : public EngineTestWorld::FWorldTest
	{
	};
} // namespace

TEST_F(FSceneComponentTest, AChildsWorldTransformIsItsRelativeTransformInItsParent)
{
	AEngineTestActor* Parent = World->SpawnActor<AEngineTestActor>(FVector(100.0, 0.0, 0.0), FRotator(0.0, 90.0, 0.0));
	AEngineTestActor* Child = Spawn<AEngineTestActor>();
	ASSERT_TRUE(Child->AttachToActor(Parent, FAttachmentTransformRules::KeepRelativeTransform));
	Child->SetActorRelativeLocation(FVector(10.0, 0.0, 0.0));
	// A yaw of 90 degrees turns the child's +X offset into +Y.
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(100.0, 10.0, 0.0)));
	EXPECT_NEAR(Child->GetActorRotation().Yaw, 90.0, 1e-3);
	EXPECT_EQ(Child->GetAttachParentActor(), Parent);

	// Moving the parent moves the child with it.
	Parent->SetActorLocation(FVector(0.0, 0.0, 50.0));
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(0.0, 10.0, 50.0)));
	Parent->GetRootComponent()->SetRelativeScale3D(FVector(2.0, 2.0, 2.0));
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(0.0, 20.0, 50.0)));
	EXPECT_TRUE(NearlyEqual(Child->GetActorScale3D(), FVector(2.0, 2.0, 2.0)));
}

TEST_F(FSceneComponentTest, KeepWorldTransformKeepsTheChildWhereItIs)
{
	AEngineTestActor* Parent = World->SpawnActor<AEngineTestActor>(FVector(100.0, 0.0, 0.0), FRotator(0.0, 90.0, 0.0));
	AEngineTestActor* Child = Spawn<AEngineTestActor>(FVector(100.0, 50.0, 0.0));
	ASSERT_TRUE(Child->AttachToActor(Parent, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(100.0, 50.0, 0.0)));
	EXPECT_NEAR(Child->GetActorRotation().Yaw, 0.0, 1e-3);
	// In the parent's frame the child is 50 units ahead and turned back by 90 degrees.
	EXPECT_TRUE(NearlyEqual(Child->GetRootComponent()->GetRelativeLocation(), FVector(50.0, 0.0, 0.0)));
	EXPECT_NEAR(Child->GetRootComponent()->GetRelativeRotation().Yaw, -90.0, 1e-3);

	Child->DetachFromActor(FDetachmentTransformRules::KeepWorldTransform);
	EXPECT_EQ(Child->GetAttachParentActor(), nullptr);
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(100.0, 50.0, 0.0)));
	EXPECT_EQ(Parent->GetRootComponent()->GetNumChildrenComponents(), 0);
}

TEST_F(FSceneComponentTest, KeepRelativeAndSnapToTargetRules)
{
	AEngineTestActor* Parent = Spawn<AEngineTestActor>(FVector(0.0, 0.0, 100.0));
	AEngineTestActor* Kept = Spawn<AEngineTestActor>(FVector(5.0, 0.0, 0.0));
	AEngineTestActor* Snapped = Spawn<AEngineTestActor>(FVector(5.0, 0.0, 0.0));
	Snapped->SetActorScale3D(FVector(3.0, 3.0, 3.0));

	ASSERT_TRUE(Kept->AttachToActor(Parent, FAttachmentTransformRules::KeepRelativeTransform));
	EXPECT_TRUE(NearlyEqual(Kept->GetActorLocation(), FVector(5.0, 0.0, 100.0)));

	ASSERT_TRUE(Snapped->AttachToActor(Parent, FAttachmentTransformRules::SnapToTargetNotIncludingScale));
	EXPECT_TRUE(NearlyEqual(Snapped->GetActorLocation(), FVector(0.0, 0.0, 100.0)));
	EXPECT_TRUE(NearlyEqual(Snapped->GetActorScale3D(), FVector(3.0, 3.0, 3.0)));
	ASSERT_TRUE(Snapped->AttachToActor(Kept, FAttachmentTransformRules::SnapToTargetIncludingScale));
	EXPECT_TRUE(NearlyEqual(Snapped->GetActorLocation(), FVector(5.0, 0.0, 100.0)));
	EXPECT_TRUE(NearlyEqual(Snapped->GetActorScale3D(), FVector(1.0, 1.0, 1.0)));
	// Reattaching moved it away from the first parent.
	EXPECT_EQ(Parent->GetRootComponent()->GetNumChildrenComponents(), 1);

	TArray<AActor*> Attached;
	Parent->GetAttachedActors(Attached, true, true);
	EXPECT_EQ(Attached, (TArray<AActor*>{Kept, Snapped}));
}

TEST_F(FSceneComponentTest, AttachmentsThatCannotBeMadeAreRefused)
{
	FLogRecorder Log;
	AEngineTestActor* A = Spawn<AEngineTestActor>();
	AEngineTestActor* B = Spawn<AEngineTestActor>();
	AEngineTestRootlessActor* Rootless = Spawn<AEngineTestRootlessActor>();

	EXPECT_FALSE(A->AttachToActor(nullptr, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_FALSE(A->AttachToActor(Rootless, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_FALSE(Rootless->AttachToActor(A, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_FALSE(A->AttachToActor(A, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_TRUE(Log.Contains("cannot be attached to itself"));

	ASSERT_TRUE(B->AttachToActor(A, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_FALSE(A->AttachToActor(B, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_TRUE(Log.Contains("would create a cycle"));
	EXPECT_EQ(A->GetAttachParentActor(), nullptr);

	AEngineTestActor* Static = Spawn<AEngineTestActor>();
	Static->GetRootComponent()->SetMobility(EComponentMobility::Static);
	EXPECT_FALSE(Static->AttachToActor(A, FAttachmentTransformRules::KeepWorldTransform));
	EXPECT_TRUE(Log.Contains("which is static"));
	// A movable child under a static parent is fine.
	EXPECT_TRUE(B->AttachToActor(Static, FAttachmentTransformRules::KeepWorldTransform));
}

TEST_F(FSceneComponentTest, SetWorldTransformUnderAParentSetsTheMatchingRelativeTransform)
{
	AEngineTestActor* Parent = World->SpawnActor<AEngineTestActor>(FVector(10.0, 20.0, 30.0), FRotator(0.0, 45.0, 0.0));
	AEngineTestActor* Child = Spawn<AEngineTestActor>();
	Child->AttachToActor(Parent, FAttachmentTransformRules::KeepRelativeTransform);
	const FTransform Target(FRotator(10.0, 20.0, 0.0), FVector(-5.0, 7.0, 2.0), FVector(1.0, 1.0, 1.0));
	ASSERT_TRUE(Child->SetActorTransform(Target));
	EXPECT_TRUE(Child->GetActorTransform().Equals(Target, 1e-3));
	Child->GetRootComponent()->SetWorldLocationAndRotation(FVector(1.0, 2.0, 3.0), FRotator(0.0, 0.0, 0.0));
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(1.0, 2.0, 3.0)));
	EXPECT_NEAR(Child->GetActorRotation().Yaw, 0.0, 1e-3);
	EXPECT_NEAR(Child->GetRootComponent()->GetRelativeRotation().Yaw, -45.0, 1e-3);
}

TEST_F(FSceneComponentTest, AbsoluteLocationIgnoresTheParent)
{
	AEngineTestActor* Parent = Spawn<AEngineTestActor>(FVector(100.0, 0.0, 0.0));
	AEngineTestActor* Child = Spawn<AEngineTestActor>();
	Child->AttachToActor(Parent, FAttachmentTransformRules::KeepRelativeTransform);
	Child->GetRootComponent()->SetAbsolute(true, false, false);
	Child->SetActorRelativeLocation(FVector(1.0, 2.0, 3.0));
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(1.0, 2.0, 3.0)));
}

TEST_F(FSceneComponentTest, SetupAttachmentAttachesWhenTheComponentIsRegistered)
{
	ACameraActor* Camera = Spawn<ACameraActor>(FVector(0.0, 0.0, 200.0));
	ASSERT_NE(Camera, nullptr);
	UCameraComponent* CameraComponent = Camera->GetCameraComponent();
	ASSERT_NE(CameraComponent, nullptr);
	EXPECT_EQ(CameraComponent->GetOwner(), Camera);
	EXPECT_NE(CameraComponent, Camera->GetRootComponent());
	EXPECT_EQ(CameraComponent->GetAttachParent(), Camera->GetRootComponent());
	EXPECT_TRUE(Camera->GetRootComponent()->GetAttachChildren().Contains(CameraComponent));
	EXPECT_TRUE(NearlyEqual(CameraComponent->GetComponentLocation(), FVector(0.0, 0.0, 200.0)));
	EXPECT_EQ(Camera->FindComponentByClass<UCameraComponent>(), CameraComponent);
	TArray<USceneComponent*> SceneComponents;
	Camera->GetComponents(SceneComponents);
	EXPECT_EQ(SceneComponents.Num(), 2);
	TArray<USceneComponent*> Children;
	Camera->GetRootComponent()->GetChildrenComponents(true, Children);
	EXPECT_EQ(Children, (TArray<USceneComponent*>{CameraComponent}));
	EXPECT_EQ(CameraComponent->GetAttachmentRootActor(), Camera);
	EXPECT_FLOAT_EQ(CameraComponent->FieldOfView, 90.f);
	EXPECT_FLOAT_EQ(CameraComponent->PostProcessBlendWeight, 1.f);
}

TEST_F(FSceneComponentTest, ComponentsAddedAtRunTimeBelongToTheActorAndCanBeDestroyed)
{
	AEngineTestActor* Actor = Spawn<AEngineTestActor>(FVector(0.0, 0.0, 10.0));
	UEngineTestTickComponent* Added = NewObject<UEngineTestTickComponent>(Actor, TEXT("Added"));
	EXPECT_EQ(Added->GetOwner(), Actor);
	EXPECT_TRUE(Actor->GetComponents().Contains(Added));
	EXPECT_FALSE(Added->IsRegistered());
	Added->SetupAttachment(Actor->GetRootComponent());
	Added->RegisterComponent();
	EXPECT_TRUE(Added->IsRegistered());
	EXPECT_EQ(Added->RegisterCount, 1);
	EXPECT_TRUE(NearlyEqual(Added->GetComponentLocation(), FVector(0.0, 0.0, 10.0)));
	EXPECT_EQ(Actor->FindComponentByClass<UEngineTestTickComponent>(), Added);

	Added->DestroyComponent();
	EXPECT_FALSE(IsValid(Added));
	EXPECT_FALSE(Added->IsRegistered());
	EXPECT_EQ(Added->UnregisterCount, 1);
	EXPECT_FALSE(Actor->GetComponents().Contains(Added));
	EXPECT_EQ(Actor->GetRootComponent()->GetNumChildrenComponents(), 0);
	EXPECT_EQ(Actor->FindComponentByClass<UEngineTestTickComponent>(), nullptr);
}

TEST_F(FSceneComponentTest, DestroyingAParentLeavesItsChildrenWhereTheyAre)
{
	AEngineTestActor* Parent = Spawn<AEngineTestActor>(FVector(100.0, 0.0, 0.0));
	AEngineTestActor* Child = Spawn<AEngineTestActor>();
	Child->AttachToActor(Parent, FAttachmentTransformRules::KeepRelativeTransform);
	Child->SetActorRelativeLocation(FVector(0.0, 10.0, 0.0));
	Parent->Destroy();
	EXPECT_EQ(Child->GetAttachParentActor(), nullptr);
	EXPECT_TRUE(NearlyEqual(Child->GetActorLocation(), FVector(100.0, 10.0, 0.0)));
}

TEST_F(FSceneComponentTest, SpawningUsesTheRootsOwnTransformWithTheSpawnTransform)
{
	// Without a location or rotation the root keeps the transform its class gave it.
	AEngineTestActor* Default = World->SpawnActor<AEngineTestActor>();
	EXPECT_TRUE(Default->GetActorTransform().Equals(FTransform::Identity));
	const FTransform Spawned(FRotator::ZeroRotator, FVector(1.0, 2.0, 3.0), FVector(2.0, 2.0, 2.0));
	AEngineTestActor* Scaled = World->SpawnActor<AEngineTestActor>(AEngineTestActor::StaticClass(), Spawned);
	EXPECT_TRUE(Scaled->GetActorTransform().Equals(Spawned, 1e-4));
}

// Copyright Orvane. All Rights Reserved.

#include "Engine/Blueprint.h"
#include "Engine/BlueprintGeneratedClass.h"
#include "EngineTestWorld.h"
#include "Kismet2/KismetEditorUtilities.h"
#include "UObject/Class.h"
#include "UObject/Package.h"
#include "UObject/Stack.h"

namespace
{
	class FConstructionTest : public EngineTestWorld::FWorldTest
	{
	protected:
		/**
		 * A Blueprint of the test actor whose construction script (a function of the generated class with a
		 * body given here) runs Script.
		 */
		UClass* MakeBlueprintClass(const TCHAR* Name, TFunction<void(AEngineTestActor*)> Script)
		{
			UPackage* Package = CreatePackage(*FString::Printf(TEXT("/Game/Tests/%s"), Name));
			UBlueprint* Blueprint = FKismetEditorUtilities::CreateBlueprint(
				AEngineTestActor::StaticClass(), Package, FName(Name), BPTYPE_Normal);
			UClass* Generated = Blueprint->GeneratedClass;
			UFunction* Construction = NewObject<UFunction>(Generated, TEXT("UserConstructionScript"));
			Construction->FunctionFlags = FUNC_Event | FUNC_BlueprintEvent | FUNC_Public;
			Construction->SetSuperStruct(AActor::StaticClass()->FindFunctionByName(TEXT("UserConstructionScript")));
			Construction->StaticLink(true);
			Construction->SetNativeCallable(
				[Script](UObject* Context, FFrame& Stack, void* Result)
				{
					Script(CastChecked<AEngineTestActor>(Context));
				});
			Generated->AddFunctionToFunctionMap(Construction, Construction->GetFName());
			return Generated;
		}
	};
} // namespace

TEST_F(FConstructionTest, RerunConstructionScriptsCallsOnConstructionAgainAtTheCurrentTransform)
{
	AEngineTestActor* Actor = Spawn<AEngineTestActor>(FVector(1.0, 2.0, 3.0));
	EXPECT_EQ(Actor->ConstructionCount, 1);
	Actor->SetActorLocation(FVector(4.0, 5.0, 6.0));
	Actor->RerunConstructionScripts();
	EXPECT_EQ(Actor->ConstructionCount, 2);
	EXPECT_TRUE(NearlyEqual(Actor->LastConstructionTransform.GetLocation(), FVector(4.0, 5.0, 6.0)));
}

TEST_F(FConstructionTest, TheClassDefaultObjectAndDestroyedActorsAreNotReconstructed)
{
	AEngineTestActor* Default = GetMutableDefault<AEngineTestActor>();
	const int32 DefaultCount = Default->ConstructionCount;
	Default->RerunConstructionScripts();
	EXPECT_EQ(Default->ConstructionCount, DefaultCount);

	AEngineTestActor* Actor = Spawn<AEngineTestActor>();
	Actor->Destroy();
	Actor->RerunConstructionScripts();
	EXPECT_EQ(Actor->ConstructionCount, 1);
}

TEST_F(FConstructionTest, ABlueprintsConstructionScriptRunsBeforeOnConstruction)
{
	TArray<FString> Order;
	bool bSawRunningFlag = false;
	UClass* Class = MakeBlueprintClass(TEXT("BP_Ordered"),
		[&Order, &bSawRunningFlag](AEngineTestActor* Actor)
		{
			Order.Add(FString::Printf(TEXT("Script %d"), Actor->ConstructionCount));
			bSawRunningFlag =
				Actor->IsRunningUserConstructionScript() && Actor->GetWorld()->bIsRunningConstructionScript;
		});
	AEngineTestActor* Actor = World->SpawnActor<AEngineTestActor>(Class);
	ASSERT_NE(Actor, nullptr);
	Actor->OnConstructed = [&Order](AEngineTestActor* Constructed)
	{
		Order.Add(FString::Printf(TEXT("Native %d"), Constructed->ConstructionCount));
	};
	Actor->RerunConstructionScripts();
	EXPECT_EQ(Order, (TArray<FString>{TEXT("Script 0"), TEXT("Script 1"), TEXT("Native 2")}));
	EXPECT_TRUE(bSawRunningFlag);
	EXPECT_FALSE(Actor->IsRunningUserConstructionScript());
	EXPECT_FALSE(World->bIsRunningConstructionScript);
	// The Blueprint class's actors are labelled without the generated class's "_C".
	EXPECT_EQ(Actor->GetDefaultActorLabel(), FString(TEXT("BP_Ordered")));
	EXPECT_EQ(Actor->GetFName().GetPlainNameString(), FString(TEXT("BP_Ordered_C")));
}

TEST_F(FConstructionTest, ComponentsMadeByTheConstructionScriptAreRebuiltOnEachRun)
{
	UClass* Class = MakeBlueprintClass(TEXT("BP_Builder"),
		[](AEngineTestActor* Actor)
		{
			USceneComponent* Made = NewObject<USceneComponent>(Actor);
			Made->SetupAttachment(Actor->GetRootComponent());
			Made->SetRelativeLocation(FVector(0.0, 0.0, (double)Actor->Value));
		});
	AEngineTestActor* Actor = World->SpawnActor<AEngineTestActor>(Class);
	ASSERT_EQ(Actor->GetComponents().Num(), 2);
	USceneComponent* FirstMade = Actor->GetRootComponent()->GetChildComponent(0);
	ASSERT_NE(FirstMade, nullptr);
	EXPECT_TRUE(FirstMade->IsRegistered());
	EXPECT_TRUE(FirstMade->IsCreatedByConstructionScript());

	Actor->Value = 25;
	Actor->RerunConstructionScripts();
	EXPECT_FALSE(IsValid(FirstMade));
	ASSERT_EQ(Actor->GetComponents().Num(), 2);
	ASSERT_EQ(Actor->GetRootComponent()->GetNumChildrenComponents(), 1);
	USceneComponent* SecondMade = Actor->GetRootComponent()->GetChildComponent(0);
	EXPECT_NE(SecondMade, FirstMade);
	EXPECT_TRUE(NearlyEqual(SecondMade->GetComponentLocation(), FVector(0.0, 0.0, 25.0)));
	// The root, made by the native constructor, is kept.
	EXPECT_FALSE(Actor->GetRootComponent()->IsCreatedByConstructionScript());
}

// Copyright Orvane. All Rights Reserved.

#include "../../Source/Runtime/CoreUObject/Private/Tests/ReflectionTestTypes.h"
#include "Delegates/Delegate.h"
#include "UObject/GCObject.h"
#include "UObject/Package.h"
#include "UObject/StrongObjectPtr.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/WeakObjectPtrTemplates.h"

#include <gtest/gtest.h>

namespace
{
	UPackage* TestPackage(const TCHAR* Name)
	{
		UPackage* Package = CreatePackage(Name);
		Package->AddToRoot();
		return Package;
	}

	/** Records whether its object was destroyed, through a weak pointer taken before. */
	struct FObserved
	{
		explicit FObserved(UObject* Object)
			: Weak(Object)
			, Index(Object->GetUniqueID())
		{
		}
		bool IsGone() const { return Weak.GetEvenIfUnreachable() == nullptr; }
		TWeakObjectPtr<UObject> Weak;
		uint32 Index;
	};

	class FHolder : public FGCObject
	{
	public:
		virtual void AddReferencedObjects(FReferenceCollector& Collector) override
		{
			Collector.AddReferencedObject(Held);
		}
		virtual FString GetReferencerName() const override { return TEXT("FHolder"); }
		UObject* Held = nullptr;
	};
} // namespace

TEST(GarbageCollectionTest, WeakPointersTurnNullAtOnce)
{
	UPackage* Package = TestPackage(TEXT("/Game/WeakPkg"));
	UReflectionTestBase* Object = NewObject<UReflectionTestBase>(Package);
	TWeakObjectPtr<UReflectionTestBase> Weak(Object);
	FWeakObjectPtr Untyped(Object);
	EXPECT_TRUE(Weak.IsValid());
	EXPECT_EQ(Weak.Get(), Object);
	EXPECT_EQ(Untyped.Get(), Object);
	EXPECT_FALSE(Weak.IsStale());
	EXPECT_TRUE(Weak == MakeWeakObjectPtr(Object));
	EXPECT_EQ(GetTypeHash(Weak), GetTypeHash(MakeWeakObjectPtr(Object)));

	Object->MarkAsGarbage();
	EXPECT_EQ(Weak.Get(), nullptr);
	EXPECT_FALSE(Weak.IsValid());
	EXPECT_FALSE((bool)Weak);
	EXPECT_EQ(Weak.Get(true), Object);
	EXPECT_TRUE(Weak.IsValid(true));
	EXPECT_TRUE(Weak.IsStale());
	EXPECT_FALSE(Weak.IsStale(false));

	CollectGarbage(RF_NoFlags);
	EXPECT_EQ(Weak.Get(true), nullptr);
	EXPECT_TRUE(Weak.IsStale(false));
	EXPECT_FALSE(Weak.IsExplicitlyNull());
	Weak.Reset();
	EXPECT_TRUE(Weak.IsExplicitlyNull());
	EXPECT_FALSE(Weak.IsStale());

	// A new object in the same slot is never reached through the old pointer.
	UReflectionTestBase* Next = nullptr;
	for (int32 Attempt = 0; Attempt < 64 && (!Next || (int32)Next->GetUniqueID() != Untyped.GetObjectIndex_Private());
		 ++Attempt)
	{
		Next = NewObject<UReflectionTestBase>(Package);
	}
	ASSERT_EQ((int32)Next->GetUniqueID(), Untyped.GetObjectIndex_Private());
	EXPECT_EQ(Untyped.Get(), nullptr);
	EXPECT_EQ(Untyped.Get(true), nullptr);
	Package->RemoveFromRoot();
}

TEST(GarbageCollectionTest, CollectsWhatIsNotReachable)
{
	UPackage* Package = TestPackage(TEXT("/Game/GcPkg"));
	UReflectionTestOwner* Rooted = NewObject<UReflectionTestOwner>(Package, TEXT("Rooted"));
	Rooted->AddToRoot();
	UReflectionTestBase* Referenced = NewObject<UReflectionTestBase>(Package, TEXT("Referenced"));
	UReflectionTestBase* InArray = NewObject<UReflectionTestBase>(Package, TEXT("InArray"));
	UReflectionTestBase* WeaklyHeld = NewObject<UReflectionTestBase>(Package, TEXT("WeaklyHeld"));
	UReflectionTestBase* Standalone = NewObject<UReflectionTestBase>(Package, TEXT("Standalone"), RF_Standalone);
	UReflectionTestBase* Loose = NewObject<UReflectionTestBase>(Package, TEXT("Loose"));
	UReflectionTestBase* Garbage = NewObject<UReflectionTestBase>(Package, TEXT("Garbage"));
	UReflectionTestBase* InnerOfLoose = NewObject<UReflectionTestBase>(Loose, TEXT("Inner"));
	UReflectionTestBase* OuterOfKept = NewObject<UReflectionTestBase>(Package, TEXT("OuterOfKept"));
	UReflectionTestBase* KeptInner = NewObject<UReflectionTestBase>(OuterOfKept, TEXT("KeptInner"));
	Rooted->Children.Add(Referenced);
	Rooted->Children.Add(InArray);
	Rooted->Children.Add(Garbage);
	Rooted->Children.Add(KeptInner);
	Rooted->WeakChild = WeaklyHeld;
	Garbage->MarkAsGarbage();

	FObserved ObservedRooted(Rooted), ObservedReferenced(Referenced), ObservedInArray(InArray),
		ObservedWeak(WeaklyHeld), ObservedStandalone(Standalone), ObservedLoose(Loose), ObservedGarbage(Garbage),
		ObservedInner(InnerOfLoose), ObservedComponent(Rooted->Component), ObservedOuter(OuterOfKept),
		ObservedKeptInner(KeptInner);

	bool bPre = false;
	bool bPost = false;
	FDelegateHandle PreHandle = FCoreUObjectDelegates::GetPreGarbageCollectDelegate().AddLambda(
		[&bPre]
		{
			bPre = true;
		});
	FDelegateHandle PostHandle = FCoreUObjectDelegates::GetPostGarbageCollect().AddLambda(
		[&bPost]
		{
			bPost = !IsGarbageCollecting();
		});

	CollectGarbage(RF_Standalone);

	EXPECT_TRUE(bPre);
	EXPECT_TRUE(bPost);
	EXPECT_FALSE(ObservedRooted.IsGone());
	EXPECT_FALSE(ObservedComponent.IsGone());
	EXPECT_FALSE(ObservedReferenced.IsGone());
	EXPECT_FALSE(ObservedInArray.IsGone());
	EXPECT_FALSE(ObservedStandalone.IsGone());
	EXPECT_FALSE(ObservedKeptInner.IsGone());
	EXPECT_FALSE(ObservedOuter.IsGone()) << "an object's outer is kept by its inners";
	EXPECT_TRUE(ObservedWeak.IsGone()) << "weak references do not keep objects";
	EXPECT_TRUE(ObservedLoose.IsGone());
	EXPECT_TRUE(ObservedInner.IsGone()) << "outers do not keep their inners";
	EXPECT_TRUE(ObservedGarbage.IsGone()) << "garbage is collected even when referenced";
	ASSERT_EQ(Rooted->Children.Num(), 4);
	EXPECT_EQ(Rooted->Children[2].Get(), nullptr) << "the reference to the garbage was cleared";
	EXPECT_EQ(Rooted->WeakChild.Get(), nullptr);
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Package, TEXT("Loose")), nullptr);

	// Without the keep flag, standalone objects go too.
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(ObservedStandalone.IsGone());
	Rooted->RemoveFromRoot();
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(ObservedRooted.IsGone());
	EXPECT_TRUE(ObservedComponent.IsGone());
	EXPECT_TRUE(ObservedReferenced.IsGone());
	EXPECT_FALSE(IsGarbageCollecting());
	FCoreUObjectDelegates::GetPreGarbageCollectDelegate().Remove(PreHandle);
	FCoreUObjectDelegates::GetPostGarbageCollect().Remove(PostHandle);
	Package->RemoveFromRoot();
}

TEST(GarbageCollectionTest, StrongPointersAndHoldersKeepObjects)
{
	UPackage* Package = TestPackage(TEXT("/Game/StrongPkg"));
	TStrongObjectPtr<UReflectionTestBase> Strong(NewObject<UReflectionTestBase>(Package));
	FObserved ObservedStrong(Strong.Get());
	FHolder Holder;
	Holder.Held = NewObject<UReflectionTestBase>(Package);
	FObserved ObservedHeld(Holder.Held);
	CollectGarbage(RF_NoFlags);
	EXPECT_FALSE(ObservedStrong.IsGone());
	EXPECT_FALSE(ObservedHeld.IsGone());
	EXPECT_TRUE(Strong.IsValid());
	TStrongObjectPtr<UReflectionTestBase> Copy = Strong;
	Strong.Reset();
	CollectGarbage(RF_NoFlags);
	EXPECT_FALSE(ObservedStrong.IsGone());
	Copy.Reset();
	Holder.Held = nullptr;
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(ObservedStrong.IsGone());
	EXPECT_TRUE(ObservedHeld.IsGone());
	Package->RemoveFromRoot();
}

TEST(GarbageCollectionTest, DestructionOrderAndNames)
{
	UPackage* Package = TestPackage(TEXT("/Game/DestroyPkg"));
	UReflectionTestBase* Object = NewObject<UReflectionTestBase>(Package, TEXT("Doomed"));
	FObserved Observed(Object);
	EXPECT_TRUE(Object->ConditionalBeginDestroy());
	EXPECT_TRUE(Object->HasAnyFlags(RF_BeginDestroyed));
	EXPECT_FALSE(Object->ConditionalBeginDestroy());
	// A destroyed object's name is free for a new object.
	EXPECT_EQ(StaticFindObject(UObject::StaticClass(), Package, TEXT("Doomed")), nullptr);
	UReflectionTestBase* Replacement = NewObject<UReflectionTestBase>(Package, TEXT("Doomed"));
	EXPECT_NE(Replacement, Object);
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(Observed.IsGone());
	Package->RemoveFromRoot();

	// A package whose standalone asset lost its flag goes with it.
	UPackage* Unrooted = CreatePackage(TEXT("/Game/DropPkg"));
	UReflectionTestBase* Asset = NewObject<UReflectionTestBase>(Unrooted, TEXT("DropPkg"), RF_Public | RF_Standalone);
	FObserved ObservedPackage(Unrooted), ObservedAsset(Asset);
	CollectGarbage(RF_Standalone);
	EXPECT_FALSE(ObservedAsset.IsGone());
	EXPECT_FALSE(ObservedPackage.IsGone());
	Asset->ClearFlags(RF_Standalone);
	CollectGarbage(RF_Standalone);
	EXPECT_TRUE(ObservedAsset.IsGone());
	EXPECT_TRUE(ObservedPackage.IsGone());
	EXPECT_EQ(FindPackage(nullptr, TEXT("/Game/DropPkg")), nullptr);
}

TEST(GarbageCollectionTest, UObjectDelegatesUnbindWithTheirObject)
{
	UPackage* Package = TestPackage(TEXT("/Game/DelegatePkg"));
	UReflectionTestObject* Object = NewObject<UReflectionTestObject>(Package);
	TDelegate<int32(int32)> Delegate =
		TDelegate<int32(int32)>::CreateUObject(Object, &UReflectionTestObject::NativeEvent);
	TMulticastDelegate<void(int32)> Multicast;
	Multicast.AddUObject(Object, &UReflectionTestObject::ImplementableEvent);
	EXPECT_TRUE(Delegate.IsBound());
	EXPECT_EQ(Delegate.Execute(1), 101);
	EXPECT_EQ(Delegate.GetUObject(), Object);
	Object->MarkAsGarbage();
	EXPECT_FALSE(Delegate.IsBound());
	Multicast.Broadcast(1);
	CollectGarbage(RF_NoFlags);
	EXPECT_FALSE(Delegate.IsBound());
	EXPECT_EQ(Delegate.GetUObject(), nullptr);
	Package->RemoveFromRoot();
}

// Copyright Orvane. All Rights Reserved.

#include "Misc/AutomationTest.h"
#include "ReflectionTestTypes.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/WeakObjectPtrTemplates.h"

#if WITH_DEV_AUTOMATION_TESTS

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FWeakPointerAfterGarbageTest,
	"System.CoreUObject.Lifetime.WeakPointerIsNullOnceTheObjectIsGarbage",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FWeakPointerAfterGarbageTest::RunTest(const FString& Parameters)
{
	UReflectionTestBase* Object = NewObject<UReflectionTestBase>(GetTransientPackage());
	const TWeakObjectPtr<UReflectionTestBase> Weak(Object);
	TestEqual(TEXT("The weak pointer reads the live object"), Weak.Get(), Object);

	// What destroying an actor does to it: the object is marked as garbage at once.
	Object->MarkAsGarbage();
	TestNull(TEXT("Null right after the object is marked as garbage"), Weak.Get());
	TestFalse(TEXT("Not valid right after the object is marked as garbage"), Weak.IsValid());
	TestFalse(TEXT("IsValid on the marked object"), IsValid(Object));

	CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS);
	TestNull(TEXT("Still null after garbage collection"), Weak.Get());
	TestTrue(TEXT("Stale after garbage collection"), Weak.IsStale(false));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FShortClassNameLookupTest,
	"System.CoreUObject.Lookup.ShortClassNamesNeedFindFirstObject",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FShortClassNameLookupTest::RunTest(const FString& Parameters)
{
	UClass* const Expected = UReflectionTestBase::StaticClass();
	TestNull(TEXT("StaticFindObject with a null outer and a short name"),
		StaticFindObject(UClass::StaticClass(), nullptr, TEXT("ReflectionTestBase")));
	TestEqual(TEXT("StaticFindObject with the full path"),
		StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Script/CoreUObject.ReflectionTestBase")),
		static_cast<UObject*>(Expected));
	TestEqual(
		TEXT("FindFirstObject with the short name"), FindFirstObject<UClass>(TEXT("ReflectionTestBase")), Expected);
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS

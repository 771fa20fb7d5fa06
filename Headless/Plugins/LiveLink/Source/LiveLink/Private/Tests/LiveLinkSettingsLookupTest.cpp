// Copyright Orvane. All Rights Reserved.

#include "LiveLinkSettings.h"
#include "Misc/AutomationTest.h"
#include "UObject/Class.h"
#include "UObject/UObjectGlobals.h"

#if WITH_DEV_AUTOMATION_TESTS

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FLiveLinkSettingsLookupTest,
	"System.LiveLink.Settings.ClassIsFoundByPathOrFindFirstObject",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FLiveLinkSettingsLookupTest::RunTest(const FString& Parameters)
{
	UClass* const Expected = ULiveLinkSettings::StaticClass();
	TestNull(TEXT("A short name with a null outer finds no class"),
		StaticFindObject(UClass::StaticClass(), nullptr, TEXT("LiveLinkSettings")));
	TestEqual(TEXT("The class path finds the class"),
		StaticFindObject(UClass::StaticClass(), nullptr, TEXT("/Script/LiveLink.LiveLinkSettings")),
		static_cast<UObject*>(Expected));
	TestEqual(TEXT("FindFirstObject finds the class by its short name"),
		FindFirstObject<UClass>(TEXT("LiveLinkSettings"), EFindFirstObjectOptions::NativeFirst), Expected);
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS

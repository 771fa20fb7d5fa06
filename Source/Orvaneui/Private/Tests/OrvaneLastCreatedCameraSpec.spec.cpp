// Copyright Orvane. All Rights Reserved.

#include "CineCameraActor.h"
#include "CoreMinimal.h"
#include "Engine/World.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneMissingPluginContent.h"
#include "OrvaneSetupTestScope.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

// Sorted before every other camera manager test, and run on its own by CTest, so nothing has spawned a camera yet.
IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneLastCreatedCameraBeforeAnySpawnTest,
	"Orvane.CameraManager.BeforeAnySpawn.LastCreatedCameraIsNull",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneLastCreatedCameraBeforeAnySpawnTest::RunTest(const FString& Parameters)
{
	TestNull(TEXT("Last created camera before any spawn"), FOrvaneCameraManager::GetLastCreatedCamera());
	return true;
}

BEGIN_DEFINE_SPEC(FOrvaneLastCreatedCameraSpec, "Orvane.CameraManager.LastCreatedCamera",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString CreatedLine = TEXT("Orvane Camera created successfully");
END_DEFINE_SPEC(FOrvaneLastCreatedCameraSpec)

void FOrvaneLastCreatedCameraSpec::Define()
{
	BeforeEach(
		[this]()
		{
			Scope.Begin();
		});

	AfterEach(
		[this]()
		{
			Scope.End();
		});

	It("is the camera just spawned",
		[this]()
		{
			const TArray<FOrvaneLogLine> Expected = {LogWarning(CreatedLine)};
			FOrvaneLogCapture::ExpectLines(*this, Expected);

			TestTrue(TEXT("Spawned"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));

			const TArray<AActor*> Cameras = GetActorsOfClass(LoadCameraClass());
			TestTrue(TEXT("The only camera of the class"),
				Cameras.Num() == 1 && Cameras[0] == FOrvaneCameraManager::GetLastCreatedCamera());
			Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
		});

	It("reads null once the user deleted the camera, although nothing reset it",
		[this]()
		{
			const TArray<FOrvaneLogLine> Expected = {LogWarning(CreatedLine)};
			FOrvaneLogCapture::ExpectLines(*this, Expected);
			TestTrue(TEXT("Spawned"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
			AActor* Camera = FOrvaneCameraManager::GetLastCreatedCamera();

			GetEditorWorld()->DestroyActor(Camera);

			TestNull(TEXT("Last created camera"), FOrvaneCameraManager::GetLastCreatedCamera());
			Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
		});

	It("reads null after a removal whose class did not load, although the camera stands",
		[this]()
		{
			AActor* Camera = GetEditorWorld()->SpawnActor(ACineCameraActor::StaticClass());
			FOrvaneCameraManagerTestAccess::RememberCamera(Camera);
			FOrvaneMissingPluginContent MissingContent;
			const TArray<FOrvaneLogLine> Expected = {
				LogWarning(TEXT("Could not load Orvane camera class for cleanup"))};
			FOrvaneLogCapture::ExpectLines(*this, Expected);
			AddExpectedErrorPlain(TEXT("Orvane_VP_Camera"), EAutomationExpectedErrorFlags::Contains, -1);

			FOrvaneCameraManagerTestAccess::RemoveExistingOrvaneCameras();

			TestTrue(TEXT("The camera stands"), IsValid(Camera));
			TestNull(TEXT("Last created camera"), FOrvaneCameraManager::GetLastCreatedCamera());
			Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
		});
}

#endif

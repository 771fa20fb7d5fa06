// Copyright Orvane. All Rights Reserved.

#include "CineCameraActor.h"
#include "CoreMinimal.h"
#include "Engine/Texture2D.h"
#include "Engine/World.h"
#include "Materials/MaterialInterface.h"
#include "Misc/AutomationTest.h"
#include "OrvaneCameraManager.h"
#include "OrvaneCameraManagerTestAccess.h"
#include "OrvaneCameraManagerTestUtilities.h"
#include "OrvaneSetupTestScope.h"
#include "UObject/Package.h"

#if WITH_DEV_AUTOMATION_TESTS

using namespace OrvaneCameraManagerTests;

BEGIN_DEFINE_SPEC(FOrvaneMaterialSpec, "Orvane.CameraManager.AlphaMaterial",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	FOrvaneSetupTestScope Scope;
	const FString FailureLine = TEXT("Failed to set camera post process material for alpha rendering");

	AActor* SpawnInEditorLevel(UClass * Class)
	{
		return GetEditorWorld()->SpawnActor(Class);
	}
END_DEFINE_SPEC(FOrvaneMaterialSpec)

void FOrvaneMaterialSpec::Define()
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

	Describe("SetPostProcessMaterialOnCamera",
		[this]()
		{
			It("adds one entry of weight 1 per call, so two calls leave two equal entries",
				[this]()
				{
					AActor* Camera = SpawnInEditorLevel(ACineCameraActor::StaticClass());
					const float BlendWeight =
						Cast<ACineCameraActor>(Camera)->GetCameraComponent()->PostProcessBlendWeight;

					TestTrue(TEXT("First"),
						FOrvaneCameraManagerTestAccess::SetPostProcessMaterialOnCamera(Camera, MaskMaterialPath));
					TestTrue(TEXT("Second"),
						FOrvaneCameraManagerTestAccess::SetPostProcessMaterialOnCamera(Camera, MaskMaterialPath));

					const TArray<FWeightedBlendable> Blendables = GetBlendables(Camera);
					UMaterialInterface* Material = LoadObject<UMaterialInterface>(nullptr, MaskMaterialPath);
					TestNotNull(TEXT("The mask material loads"), Material);
					if (TestEqual(TEXT("Entries"), Blendables.Num(), 2))
					{
						for (const FWeightedBlendable& Blendable : Blendables)
						{
							TestEqual(TEXT("Weight"), Blendable.Weight, 1.0f);
							TestTrue(TEXT("Object"), Blendable.Object == Material);
						}
					}
					TestEqual(TEXT("Overall blend weight untouched"),
						Cast<ACineCameraActor>(Camera)->GetCameraComponent()->PostProcessBlendWeight, BlendWeight);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), {});
				});

			It("refuses an actor that is not a cine camera, although the material exists",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(FailureLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AActor* Plain = SpawnInEditorLevel(AActor::StaticClass());
					TestNotNull(
						TEXT("The mask material exists"), LoadObject<UMaterialInterface>(nullptr, MaskMaterialPath));

					TestFalse(TEXT("Result"),
						FOrvaneCameraManagerTestAccess::SetPostProcessMaterialOnCamera(Plain, MaskMaterialPath));

					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					GetEditorWorld()->DestroyActor(Plain);
				});

			It("refuses a null camera",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(FailureLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestFalse(TEXT("Result"),
						FOrvaneCameraManagerTestAccess::SetPostProcessMaterialOnCamera(nullptr, MaskMaterialPath));
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("refuses an empty path",
				[this]()
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(FailureLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AActor* Camera = SpawnInEditorLevel(ACineCameraActor::StaticClass());

					TestFalse(TEXT("Result"),
						FOrvaneCameraManagerTestAccess::SetPostProcessMaterialOnCamera(Camera, FString()));

					TestEqual(TEXT("No entry"), GetBlendables(Camera).Num(), 0);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
				});

			It("refuses an asset that is not a material interface, such as a texture",
				[this]()
				{
					UPackage* Package = CreatePackage(TEXT("/Game/OrvaneTests/AlphaMaterialSpec_Texture"));
					UTexture2D* Texture =
						NewObject<UTexture2D>(Package, FName(TEXT("AlphaMaterialSpec_Texture")), RF_Public);
					const TArray<FOrvaneLogLine> Expected = {LogWarning(FailureLine)};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					AddExpectedErrorPlain(TEXT("/Game/OrvaneTests/AlphaMaterialSpec_Texture"),
						EAutomationExpectedErrorFlags::Contains, -1);
					AActor* Camera = SpawnInEditorLevel(ACineCameraActor::StaticClass());

					TestFalse(TEXT("Result"), FOrvaneCameraManagerTestAccess::SetPostProcessMaterialOnCamera(
												  Camera, TEXT("/Game/OrvaneTests/AlphaMaterialSpec_Texture")));

					TestEqual(TEXT("No entry"), GetBlendables(Camera).Num(), 0);
					Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
					Texture->ClearFlags(RF_Public);
					Texture->MarkAsGarbage();
					Package->MarkAsGarbage();
				});
		});

	Describe("ApplyPostProcessMaterialToLastCreatedCamera",
		[this]()
		{
			LatentIt("adds the material to the last created camera one second later",
				[this](const FDoneDelegate& Done)
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Orvane Camera created successfully"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Camera"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
					const TWeakObjectPtr<AActor> Camera = FOrvaneCameraManager::GetLastCreatedCamera();

					FOrvaneCameraManagerTestAccess::ApplyPostProcessMaterialToLastCreatedCamera(MaskMaterialPath);

					TestEqual(TEXT("Nothing at once"), GetBlendables(Camera.Get()).Num(), 0);
					WaitSeconds(0.9,
						[this, Done, Camera, Expected]()
						{
							TestEqual(TEXT("Nothing before a second"), GetBlendables(Camera.Get()).Num(), 0);
							WaitSeconds(0.3,
								[this, Done, Camera, Expected]()
								{
									TestEqual(TEXT("One entry after a second"), GetBlendables(Camera.Get()).Num(), 1);
									Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
									Done.Execute();
								});
						});
				});

			LatentIt("skips a camera that is gone when the timer fires, silently",
				[this](const FDoneDelegate& Done)
				{
					const TArray<FOrvaneLogLine> Expected = {LogWarning(TEXT("Orvane Camera created successfully"))};
					FOrvaneLogCapture::ExpectLines(*this, Expected);
					TestTrue(TEXT("Camera"), FOrvaneCameraManagerTestAccess::CreateOrvaneCamera(FString(), false));
					FOrvaneCameraManagerTestAccess::ApplyPostProcessMaterialToLastCreatedCamera(MaskMaterialPath);
					GetEditorWorld()->DestroyActor(FOrvaneCameraManager::GetLastCreatedCamera());

					WaitSeconds(1.2,
						[this, Done, Expected]()
						{
							Scope.GetLog().TestLines(*this, TEXT("Lines"), Expected);
							Done.Execute();
						});
				});
		});
}

#endif

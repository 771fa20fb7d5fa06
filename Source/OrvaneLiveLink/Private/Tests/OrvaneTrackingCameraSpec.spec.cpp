// Copyright Orvane. All Rights Reserved.

#include "CineCameraActor.h"
#include "CineCameraComponent.h"
#include "CoreMinimal.h"
#include "Editor.h"
#include "Editor/EditorEngine.h"
#include "Engine/World.h"
#include "ILiveLinkClient.h"
#include "LiveLinkComponentController.h"
#include "Misc/AutomationTest.h"
#include "OrvaneLiveLinkHelper.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"
#include "Tests/OrvaneTrackingTestUtilities.h"
#include "UObject/StrongObjectPtr.h"

#if WITH_DEV_AUTOMATION_TESTS

BEGIN_DEFINE_SPEC(FOrvaneTrackingCameraSpec, "Orvane.LiveLink.TrackedCineCamera",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	ILiveLinkClient* Client = nullptr;
	TStrongObjectPtr<ACineCameraActor> Camera;
END_DEFINE_SPEC(FOrvaneTrackingCameraSpec)

void FOrvaneTrackingCameraSpec::Define()
{
	AfterEach(
		[this]()
		{
			if (Camera.IsValid() && Camera->GetWorld())
			{
				Camera->GetWorld()->DestroyActor(Camera.Get());
			}
			Camera.Reset();
			if (Client)
			{
				OrvaneTrackingTests::RemoveAllSources(*Client);
			}
		});

	LatentIt("moves a cine camera in the editor world and sets its lens from datagrams sent to the source",
		FTimespan::FromSeconds(600.0),
		[this](const FDoneDelegate& Done)
		{
			Client = OrvaneTrackingTests::GetClient();
			UWorld* World = GEditor ? GEditor->GetEditorWorldContext().World() : nullptr;
			if (!TestNotNull(TEXT("Live Link client"), Client) || !TestNotNull(TEXT("Editor world"), World) ||
				!TestTrue(TEXT("No sources left over"), OrvaneTrackingTests::RemoveAllSources(*Client)))
			{
				Done.Execute();
				return;
			}

			Camera.Reset(World->SpawnActor<ACineCameraActor>());
			ULiveLinkComponentController* Controller = NewObject<ULiveLinkComponentController>(Camera.Get());
			Controller->RegisterComponent();
			Controller->bUpdateInEditor = true;
			const FName Subject(TEXT("OpenTrackIO 1"));
			FLiveLinkSubjectRepresentation Representation;
			Representation.Subject = Subject;
			Representation.Role = ULiveLinkCameraRole::StaticClass();
			Controller->SetSubjectRepresentation(Representation);

			const uint16 Port = OrvaneTrackingTests::FindFreeUdpPort();
			TestTrue(
				TEXT("Source"), UOrvaneLiveLinkHelper::CreateOrvaneSource(FString::Printf(TEXT("127.0.0.1:%d"), Port)));
			TArray<uint8> Datagram;
			TestTrue(TEXT("Datagram loaded"),
				OrvaneTrackingTests::LoadTestData(
					TEXT("OpenTrackIO/wire/otio_recommended_dynamic_json_seq0.bin"), Datagram));

			// Frames pass: the source binds in its first update, then the datagram goes out, then the
			// client applies the frame and the component ticks with the editor world.
			TSharedRef<bool> bSent = MakeShared<bool>(false);
			OrvaneTrackingTests::WaitForFrames(
				[this, Port, Datagram, bSent, Subject]()
				{
					if (!*bSent && Client->GetSources().Num() == 1 &&
						Client->IsSourceStillValid(Client->GetSources()[0]))
					{
						*bSent = OrvaneTrackingTests::SendDatagram(Port, Datagram);
					}
					return *bSent && Camera->GetCineCameraComponent()->CurrentFocalLength != 35.0f;
				},
				2.0,
				[this, Done, Subject](bool bArrived)
				{
					TestTrue(TEXT("The camera took the tracked lens"), bArrived);
					FLiveLinkSubjectFrameData Data;
					if (TestTrue(TEXT("Subject evaluates"),
							Client->EvaluateFrame_AnyThread(Subject, ULiveLinkCameraRole::StaticClass(), Data)))
					{
						const FLiveLinkCameraFrameData* Frame = Data.FrameData.Cast<FLiveLinkCameraFrameData>();
						const UCineCameraComponent* Lens = Camera->GetCineCameraComponent();
						TestTrue(TEXT("Camera placed where the tracker says"),
							Camera->GetActorLocation().Equals(Frame->Transform.GetLocation(), 1e-3));
						TestTrue(TEXT("Camera turned as the tracker says"),
							Camera->GetActorRotation().Equals(Frame->Transform.Rotator(), 1e-3));
						TestEqual(TEXT("Focal length in mm"), Lens->CurrentFocalLength, 24.305f, 1e-4f);
						TestEqual(TEXT("Aperture"), Lens->CurrentAperture, 4.0f, 1e-6f);
						TestEqual(TEXT("Manual focus distance in cm"), Lens->FocusSettings.ManualFocusDistance, 1000.0f,
							1e-3f);
						TestEqual(TEXT("Focus method"), Lens->FocusSettings.FocusMethod, ECameraFocusMethod::Manual);
					}
					Done.Execute();
				});
		});
}

#endif

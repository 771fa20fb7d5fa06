// Copyright Orvane. All Rights Reserved.

#include "OrvaneCineCameraActor.h"

#include "CineCameraComponent.h"
#include "CoreMinimal.h"
#include "Engine/Engine.h"
#include "Engine/World.h"
#include "ILiveLinkClient.h"
#include "LiveLinkCameraController.h"
#include "LiveLinkComponentController.h"
#include "LiveLinkPreset.h"
#include "LiveLinkPresetTypes.h"
#include "LiveLinkSourceSettings.h"
#include "Misc/AutomationTest.h"
#include "OrvaneTrackingSourceFactory.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Templates/UniquePtr.h"
#include "Tests/OrvaneTrackingTestUtilities.h"
#include "UObject/Package.h"
#include "UObject/StrongObjectPtr.h"
#include "UObject/UnrealType.h"

#if WITH_DEV_AUTOMATION_TESTS && WITH_EDITOR

namespace OrvaneCineCameraActorTest
{
	constexpr EAutomationTestFlags TestFlags = EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter;

	/** The class of the plug-in's camera Blueprint. */
	const TCHAR* const CameraClassPath = TEXT("/Orvane/Orvane_VP_Camera.Orvane_VP_Camera_C");

	/** The subject the FreeD test vector 2 (camera id 255) creates: not the class's default subject. */
	const FName PresetSubjectName(TEXT("FreeD 255"));

	/** The world of the level being edited. */
	UWorld* FindEditorWorld()
	{
		if (GEngine)
		{
			for (const FWorldContext& Context : GEngine->GetWorldContexts())
			{
				if (Context.WorldType == EWorldType::Editor && Context.World())
				{
					return Context.World();
				}
			}
		}
		return nullptr;
	}

	/** The camera Blueprint's two variables, found by name as the setup finds them. */
	struct FCameraVariables
	{
		FBoolProperty* SetPreset = nullptr;
		FObjectPropertyBase* Preset = nullptr;

		explicit FCameraVariables(const UClass* Class)
		{
			for (TFieldIterator<FProperty> It(Class, EFieldIteratorFlags::IncludeSuper); It; ++It)
			{
				if (It->GetFName() == TEXT("Set LiveLink Preset"))
				{
					SetPreset = CastField<FBoolProperty>(*It);
				}
				else if (It->GetFName() == TEXT("LiveLinkPreset"))
				{
					Preset = CastField<FObjectPropertyBase>(*It);
				}
			}
		}

		bool IsValid() const { return SetPreset && Preset; }

		void Write(UObject* Camera, bool bSetPreset, ULiveLinkPreset* InPreset) const
		{
			SetPreset->SetPropertyValue_InContainer(Camera, bSetPreset);
			Preset->SetObjectPropertyValue_InContainer(Camera, InPreset);
		}
	};

	/**
	 * What one test sets up: the Live Link client emptied of sources, cameras spawned in the editor world and
	 * presets. Everything is removed again when the scope ends, whatever the test's outcome.
	 */
	class FCameraTestScope
	{
	public:
		explicit FCameraTestScope(FAutomationTestBase& InTest)
			: Test(InTest)
			, Client(OrvaneTrackingTests::GetClient())
			, World(FindEditorWorld())
		{
			bReady = Test.TestNotNull(TEXT("Live Link client"), Client) &&
					 Test.TestNotNull(TEXT("Editor world"), World) &&
					 Test.TestTrue(TEXT("No sources left over"), OrvaneTrackingTests::RemoveAllSources(*Client));
		}

		~FCameraTestScope()
		{
			for (const TWeakObjectPtr<AActor>& Camera : Cameras)
			{
				if (Camera.IsValid() && Camera->GetWorld())
				{
					Camera->GetWorld()->DestroyActor(Camera.Get());
				}
			}
			if (Client)
			{
				Test.TestTrue(TEXT("Sources removed"), OrvaneTrackingTests::RemoveAllSources(*Client));
			}
			for (TStrongObjectPtr<ULiveLinkPreset>& Preset : Presets)
			{
				Preset->MarkAsGarbage();
				Preset.Reset();
			}
		}

		bool IsReady() const { return bReady; }
		ILiveLinkClient& GetClient() const { return *Client; }

		/** Spawns a camera of Class at the origin of the editor world, as the setup does. */
		AOrvaneCineCameraActor* SpawnCamera(UClass* Class)
		{
			AActor* Actor =
				World->SpawnActor(Class, &FVector::ZeroVector, &FRotator::ZeroRotator, FActorSpawnParameters());
			Cameras.Add(Actor);
			return Cast<AOrvaneCineCameraActor>(Actor);
		}

		/** Adds a tracking source on a free loopback port to the client; its id, invalid if it was not created. */
		FGuid AddTrackingSource(uint16& OutPort)
		{
			OutPort = OrvaneTrackingTests::FindFreeUdpPort();
			const TSharedPtr<ILiveLinkSource> Source = GetDefault<UOrvaneTrackingSourceFactory>()->CreateSource(
				FString::Printf(TEXT("127.0.0.1:%d"), OutPort));
			if (!Test.TestTrue(TEXT("Tracking source created"), Source.IsValid()))
			{
				return FGuid();
			}
			return Client->AddSource(Source);
		}

		/**
		 * A preset of the client holding one tracking source, made the way a user makes one (Build From Client),
		 * after which the source is removed again. With bWithSubject, the source first receives a datagram of FreeD
		 * camera 255, so the preset also holds that camera-role subject.
		 */
		ULiveLinkPreset* MakePreset(bool bWithSubject, FGuid& OutSourceGuid, uint16* OutPort = nullptr)
		{
			uint16 Port = 0;
			OutSourceGuid = AddTrackingSource(Port);
			if (OutPort)
			{
				*OutPort = Port;
			}
			if (!OutSourceGuid.IsValid())
			{
				return nullptr;
			}
			if (bWithSubject)
			{
				TArray<uint8> Datagram;
				Test.TestTrue(TEXT("FreeD vector 2 loaded"),
					OrvaneTrackingTests::LoadTestData(TEXT("FreeD/freed_d1_vector2.bin"), Datagram));
				const FLiveLinkSubjectKey Key(OutSourceGuid, PresetSubjectName);
				// Datagrams sent before the source has bound its socket are lost: send until one arrives.
				Test.TestTrue(
					TEXT("The tracking subject arrives"), OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
															  [this, Port, &Datagram, &Key]()
															  {
																  OrvaneTrackingTests::SendDatagram(Port, Datagram);
																  return Client->GetSubjects(true, false).Contains(Key);
															  }));
			}
			ULiveLinkPreset* Preset = NewObject<ULiveLinkPreset>(
				GetTransientPackage(), MakeUniqueObjectName(GetTransientPackage(), ULiveLinkPreset::StaticClass()));
			Presets.Emplace(Preset);
			Preset->BuildFromClient();
			Test.TestTrue(
				TEXT("Source removed after the preset was built"), OrvaneTrackingTests::RemoveAllSources(*Client));
			return Preset;
		}

	private:
		FAutomationTestBase& Test;
		ILiveLinkClient* Client = nullptr;
		UWorld* World = nullptr;
		bool bReady = false;
		TArray<TWeakObjectPtr<AActor>> Cameras;
		TArray<TStrongObjectPtr<ULiveLinkPreset>> Presets;
	};

	/** The subject the camera's Live Link controller is pointed at. */
	FName GetBoundSubject(const AOrvaneCineCameraActor& Camera)
	{
		return Camera.GetLiveLinkController()->GetSubjectRepresentation().Subject.Name;
	}
} // namespace OrvaneCineCameraActorTest

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneCineCameraBlueprintTest,
	"Orvane.Tracking.CineCamera.Blueprint.LoadsWithVariables", OrvaneCineCameraActorTest::TestFlags)

bool FOrvaneCineCameraBlueprintTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneCineCameraActorTest;
	UClass* Class = LoadObject<UClass>(nullptr, CameraClassPath);
	if (!TestNotNull(TEXT("The camera Blueprint's class loads from the plug-in's content"), Class))
	{
		return false;
	}
	TestTrue(TEXT("A cine camera"), Class->IsChildOf(ACineCameraActor::StaticClass()));
	TestEqual(TEXT("Its parent is the tracked cine camera class"), Class->GetSuperClass(),
		AOrvaneCineCameraActor::StaticClass());

	const FCameraVariables Variables(Class);
	if (!TestTrue(TEXT("Both Blueprint variables are properties of the class"), Variables.IsValid()))
	{
		return false;
	}
	TestTrue(TEXT("The preset variable holds Live Link presets"),
		Variables.Preset->PropertyClass == ULiveLinkPreset::StaticClass());
	const int32 NativeSize = AOrvaneCineCameraActor::StaticClass()->GetPropertiesSize();
	TestTrue(TEXT("The switch lives after the native class's memory"),
		Variables.SetPreset->GetOffset_ForInternal() >= NativeSize);
	TestTrue(TEXT("The preset lives after the native class's memory"),
		Variables.Preset->GetOffset_ForInternal() >= NativeSize);

	const UObject* Defaults = Class->GetDefaultObject();
	TestFalse(TEXT("The switch is off by default"), Variables.SetPreset->GetPropertyValue_InContainer(Defaults));
	TestNull(TEXT("No preset by default"), Variables.Preset->GetObjectPropertyValue_InContainer(Defaults));

	const FCameraVariables NativeVariables(AOrvaneCineCameraActor::StaticClass());
	TestTrue(TEXT("The native class has neither variable"), !NativeVariables.SetPreset && !NativeVariables.Preset);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneCineCameraSpawnTest, "Orvane.Tracking.CineCamera.Blueprint.SpawnsTrackedCamera",
	OrvaneCineCameraActorTest::TestFlags)

bool FOrvaneCineCameraSpawnTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneCineCameraActorTest;
	FCameraTestScope Scope(*this);
	UClass* Class = LoadObject<UClass>(nullptr, CameraClassPath);
	if (!Scope.IsReady() || !TestNotNull(TEXT("Camera class"), Class))
	{
		return false;
	}

	AOrvaneCineCameraActor* Camera = Scope.SpawnCamera(Class);
	if (!TestNotNull(TEXT("Spawning the Blueprint gives a tracked cine camera"), Camera))
	{
		return false;
	}
	TestEqual(TEXT("Of the Blueprint's class"), Camera->GetClass(), Class);
	ULiveLinkComponentController* Controller = Camera->GetLiveLinkController();
	if (!TestNotNull(TEXT("Live Link controller"), Controller))
	{
		return false;
	}
	TestEqual(TEXT("The controller belongs to the camera"), Controller->GetOwner(), static_cast<AActor*>(Camera));
	TestTrue(TEXT("The controller is registered"), Controller->IsRegistered());
	TestTrue(TEXT("The camera moves in the editor viewport"), Controller->bUpdateInEditor);
	TestEqual(
		TEXT("Camera role"), Controller->GetSubjectRepresentation().Role.Get(), ULiveLinkCameraRole::StaticClass());
	TestEqual(TEXT("The lens controller is the camera controller"),
		Controller->GetControllerClassForRoleClass(ULiveLinkCameraRole::StaticClass()).Get(),
		ULiveLinkCameraController::StaticClass());
	TestEqual(TEXT("The lens controller drives the cine camera component"),
		Controller->GetControlledComponent(ULiveLinkCameraRole::StaticClass()),
		static_cast<UActorComponent*>(Camera->GetCineCameraComponent()));

	// The Blueprint's switch is off by default: spawning binds nothing and adds no source.
	TestTrue(TEXT("No subject yet"), GetBoundSubject(*Camera).IsNone());
	TestEqual(TEXT("No source added"), Scope.GetClient().GetSources(true).Num(), 0);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneCineCameraPresetTest,
	"Orvane.Tracking.CineCamera.Preset.AddsSourceAndBindsSubject", OrvaneCineCameraActorTest::TestFlags)

bool FOrvaneCineCameraPresetTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneCineCameraActorTest;
	FCameraTestScope Scope(*this);
	UClass* Class = LoadObject<UClass>(nullptr, CameraClassPath);
	if (!Scope.IsReady() || !TestNotNull(TEXT("Camera class"), Class))
	{
		return false;
	}
	ILiveLinkClient& Client = Scope.GetClient();
	FGuid SourceGuid;
	ULiveLinkPreset* Preset = Scope.MakePreset(true, SourceGuid);
	if (!TestNotNull(TEXT("Preset"), Preset) ||
		!TestEqual(TEXT("The preset holds the source"), Preset->GetSourcePresets().Num(), 1) ||
		!TestEqual(TEXT("The preset holds the subject"), Preset->GetSubjectPresets().Num(), 1) ||
		!TestEqual(TEXT("The client has no source before the camera is bound"), Client.GetSources(true).Num(), 0))
	{
		return false;
	}

	AOrvaneCineCameraActor* Camera = Scope.SpawnCamera(Class);
	const FCameraVariables Variables(Class);
	if (!TestNotNull(TEXT("Camera"), Camera) || !TestTrue(TEXT("Variables"), Variables.IsValid()))
	{
		return false;
	}
	// A source the user already has must survive the camera's construction.
	uint16 OtherPort = 0;
	const FGuid OtherSourceGuid = Scope.AddTrackingSource(OtherPort);
	Variables.Write(Camera, true, Preset);
	Camera->RerunConstructionScripts();

	TArray<FGuid> Sources = Client.GetSources(true);
	TestEqual(TEXT("Construction added the preset's source to the client's"), Sources.Num(), 2);
	TestTrue(TEXT("The preset's own source"), Sources.Contains(SourceGuid));
	TestTrue(TEXT("The client's other source is kept"), Sources.Contains(OtherSourceGuid));
	const ULiveLinkSourceSettings* PresetSourceSettings = Client.GetSourceSettings(SourceGuid);
	TestNotNull(TEXT("The preset's source has its settings"), PresetSourceSettings);
	TestTrue(TEXT("And the preset's subject"),
		Client.GetSubjects(true, false).Contains(FLiveLinkSubjectKey(SourceGuid, PresetSubjectName)));
	TestEqual(TEXT("The controller follows the preset's camera subject"), GetBoundSubject(*Camera), PresetSubjectName);
	TestEqual(TEXT("In the camera role"), Camera->GetLiveLinkController()->GetSubjectRepresentation().Role.Get(),
		ULiveLinkCameraRole::StaticClass());
	TestEqual(TEXT("The lens still goes to the cine camera component"),
		Camera->GetLiveLinkController()->GetControlledComponent(ULiveLinkCameraRole::StaticClass()),
		static_cast<UActorComponent*>(Camera->GetCineCameraComponent()));

	// Moving the camera in the editor runs its construction again: the client keeps its one source.
	Camera->SetActorLocation(FVector(100.0, 0.0, 0.0));
	Camera->RerunConstructionScripts();
	Sources = Client.GetSources(true);
	TestEqual(TEXT("A second construction adds no second source"), Sources.Num(), 2);
	TestTrue(TEXT("The preset's source is still there"), Sources.Contains(SourceGuid));
	TestTrue(TEXT("The client's other source is still there"), Sources.Contains(OtherSourceGuid));
	// A source that was removed and created again would have new settings.
	TestTrue(TEXT("The preset's source was kept, not created again"),
		Client.GetSourceSettings(SourceGuid) == PresetSourceSettings);
	TestEqual(TEXT("One subject"), Client.GetSubjects(true, false).Num(), 1);
	TestEqual(TEXT("Still bound to the same subject"), GetBoundSubject(*Camera), PresetSubjectName);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneCineCameraFallbackSubjectTest,
	"Orvane.Tracking.CineCamera.Preset.WithoutSubjectBindsTrackingSubjectName", OrvaneCineCameraActorTest::TestFlags)

bool FOrvaneCineCameraFallbackSubjectTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneCineCameraActorTest;
	FCameraTestScope Scope(*this);
	UClass* Class = LoadObject<UClass>(nullptr, CameraClassPath);
	if (!Scope.IsReady() || !TestNotNull(TEXT("Camera class"), Class))
	{
		return false;
	}
	ILiveLinkClient& Client = Scope.GetClient();
	FGuid SourceGuid;
	ULiveLinkPreset* Preset = Scope.MakePreset(false, SourceGuid);
	AOrvaneCineCameraActor* Camera = Scope.SpawnCamera(Class);
	const FCameraVariables Variables(Class);
	if (!TestNotNull(TEXT("Preset"), Preset) || !TestNotNull(TEXT("Camera"), Camera) ||
		!TestTrue(TEXT("Variables"), Variables.IsValid()) ||
		!TestEqual(
			TEXT("No subject in the preset: no tracking data had arrived"), Preset->GetSubjectPresets().Num(), 0))
	{
		return false;
	}
	TestEqual(TEXT("The default tracking subject"), Camera->TrackingSubjectName, FName(TEXT("FreeD 1")));

	Variables.Write(Camera, true, Preset);
	Camera->RerunConstructionScripts();
	TestEqual(TEXT("The source is added"), Client.GetSources(true).Num(), 1);
	TestEqual(
		TEXT("Bound to the default subject before any data arrives"), GetBoundSubject(*Camera), FName(TEXT("FreeD 1")));

	Camera->TrackingSubjectName = TEXT("OpenTrackIO 3");
	Camera->RerunConstructionScripts();
	TestEqual(TEXT("Bound to the subject the camera names"), GetBoundSubject(*Camera), FName(TEXT("OpenTrackIO 3")));
	TestEqual(TEXT("Still one source"), Client.GetSources(true).Num(), 1);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneCineCameraSwitchOffTest,
	"Orvane.Tracking.CineCamera.Preset.SwitchOffOrNoPresetDoesNothing", OrvaneCineCameraActorTest::TestFlags)

bool FOrvaneCineCameraSwitchOffTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneCineCameraActorTest;
	FCameraTestScope Scope(*this);
	UClass* Class = LoadObject<UClass>(nullptr, CameraClassPath);
	if (!Scope.IsReady() || !TestNotNull(TEXT("Camera class"), Class))
	{
		return false;
	}
	ILiveLinkClient& Client = Scope.GetClient();
	FGuid SourceGuid;
	ULiveLinkPreset* Preset = Scope.MakePreset(true, SourceGuid);
	AOrvaneCineCameraActor* Camera = Scope.SpawnCamera(Class);
	const FCameraVariables Variables(Class);
	if (!TestNotNull(TEXT("Preset"), Preset) || !TestNotNull(TEXT("Camera"), Camera) ||
		!TestTrue(TEXT("Variables"), Variables.IsValid()))
	{
		return false;
	}

	Variables.Write(Camera, false, Preset);
	Camera->RerunConstructionScripts();
	TestNull(TEXT("Switch off: no preset to apply"), Camera->GetPresetToApply());
	TestEqual(TEXT("Switch off: no source added"), Client.GetSources(true).Num(), 0);
	TestTrue(TEXT("Switch off: the controller is left alone"), GetBoundSubject(*Camera).IsNone());

	Variables.Write(Camera, true, nullptr);
	Camera->RerunConstructionScripts();
	TestNull(TEXT("No preset: nothing to apply"), Camera->GetPresetToApply());
	TestEqual(TEXT("No preset: no source added"), Client.GetSources(true).Num(), 0);
	TestTrue(TEXT("No preset: the controller is left alone"), GetBoundSubject(*Camera).IsNone());

	// Both set: the same camera now binds, which shows that the two cases above were decided by the variables.
	Variables.Write(Camera, true, Preset);
	Camera->RerunConstructionScripts();
	TestEqual(TEXT("Both set: the preset is applied"), Camera->GetPresetToApply(), Preset);
	TestEqual(TEXT("Both set: the source is added"), Client.GetSources(true).Num(), 1);
	TestEqual(TEXT("Both set: the subject is bound"), GetBoundSubject(*Camera), PresetSubjectName);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneCineCameraNativeClassTest,
	"Orvane.Tracking.CineCamera.NativeClassWithoutVariablesDoesNothing", OrvaneCineCameraActorTest::TestFlags)

bool FOrvaneCineCameraNativeClassTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneCineCameraActorTest;
	FCameraTestScope Scope(*this);
	if (!Scope.IsReady())
	{
		return false;
	}
	AOrvaneCineCameraActor* Camera = Scope.SpawnCamera(AOrvaneCineCameraActor::StaticClass());
	if (!TestNotNull(TEXT("Native camera"), Camera))
	{
		return false;
	}
	Camera->RerunConstructionScripts();
	TestNull(TEXT("Nothing to apply without the Blueprint variables"), Camera->GetPresetToApply());
	TestEqual(TEXT("No source added"), Scope.GetClient().GetSources(true).Num(), 0);
	TestTrue(TEXT("The controller is left alone"), GetBoundSubject(*Camera).IsNone());
	TestNotNull(TEXT("The native class has its controller too"), Camera->GetLiveLinkController());
	return true;
}

BEGIN_DEFINE_SPEC(
	FOrvaneCineCameraTrackingSpec, "Orvane.Tracking.CineCamera.FollowsTracking", OrvaneCineCameraActorTest::TestFlags)
	TUniquePtr<OrvaneCineCameraActorTest::FCameraTestScope> Scope;
END_DEFINE_SPEC(FOrvaneCineCameraTrackingSpec)

void FOrvaneCineCameraTrackingSpec::Define()
{
	using namespace OrvaneCineCameraActorTest;

	AfterEach(
		[this]()
		{
			Scope.Reset();
		});

	LatentIt("moves the Blueprint camera in the editor world once its preset is applied and datagrams arrive",
		FTimespan::FromSeconds(600.0),
		[this](const FDoneDelegate& Done)
		{
			Scope = MakeUnique<FCameraTestScope>(*this);
			UClass* Class = LoadObject<UClass>(nullptr, CameraClassPath);
			FGuid SourceGuid;
			uint16 Port = 0;
			ULiveLinkPreset* Preset = Scope->IsReady() ? Scope->MakePreset(true, SourceGuid, &Port) : nullptr;
			AOrvaneCineCameraActor* Camera = Class ? Scope->SpawnCamera(Class) : nullptr;
			const FCameraVariables Variables(Class);
			TArray<uint8> Datagram;
			if (!TestNotNull(TEXT("Preset"), Preset) || !TestNotNull(TEXT("Camera"), Camera) ||
				!TestTrue(TEXT("Variables"), Variables.IsValid()) ||
				!TestTrue(TEXT("FreeD vector 2 loaded"),
					OrvaneTrackingTests::LoadTestData(TEXT("FreeD/freed_d1_vector2.bin"), Datagram)))
			{
				Done.Execute();
				return;
			}
			Variables.Write(Camera, true, Preset);
			Camera->RerunConstructionScripts();
			const FVector LensOffset = Camera->GetCineCameraComponent()->GetRelativeLocation();

			// The preset's source binds its port during the client's next updates; datagrams sent before that
			// are lost, so one goes out every frame until the camera has moved.
			const FVector Expected(-13107.2, 13107.1984375, -0.0015625);
			TWeakObjectPtr<AOrvaneCineCameraActor> WeakCamera(Camera);
			OrvaneTrackingTests::WaitForFrames(
				[WeakCamera, Port, Datagram, Expected]()
				{
					OrvaneTrackingTests::SendDatagram(Port, Datagram);
					return WeakCamera.IsValid() && WeakCamera->GetActorLocation().Equals(Expected, 1e-3);
				},
				2.0,
				[this, Done, WeakCamera, LensOffset, Expected](bool bMoved)
				{
					TestTrue(TEXT("The camera stands where the tracker says"), bMoved);
					if (TestTrue(TEXT("Camera still there"), WeakCamera.IsValid()))
					{
						TestTrue(TEXT("The whole actor follows: the cine camera keeps its place on it"),
							WeakCamera->GetCineCameraComponent()->GetRelativeLocation().Equals(LensOffset, 1e-6));
						TestTrue(TEXT("The cine camera sits at the actor's origin"), LensOffset.IsNearlyZero());
						TestTrue(TEXT("So the view is taken from where the tracker says"),
							WeakCamera->GetCineCameraComponent()->GetComponentLocation().Equals(Expected, 1e-3));
					}
					Done.Execute();
				});
		});
}

#endif // WITH_DEV_AUTOMATION_TESTS && WITH_EDITOR

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Editor.h"
#include "Editor/UnrealEdEngine.h"
#include "Engine/World.h"
#include "EngineTestPrinters.h"
#include "Features/IModularFeatures.h"
#include "HAL/CriticalSection.h"
#include "ILiveLinkClient.h"
#include "LaunchEngineLoop.h"
#include "LiveLinkComponentController.h"
#include "LiveLinkTestSource.h"
#include "LiveLinkTypes.h"
#include "Misc/App.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/ScopeLock.h"
#include "Modules/ModuleManager.h"
#include "Roles/LiveLinkTransformRole.h"
#include "Roles/LiveLinkTransformTypes.h"
#include "UObject/Package.h"
#include "UnrealEdGlobals.h"

#include <gtest/gtest.h>

/** Records the warnings and errors logged while it exists. */
class FControllerTestLogCapture : public FOutputDevice
{
public:
	FControllerTestLogCapture() { GLog->AddOutputDevice(this); }
	virtual ~FControllerTestLogCapture() override { GLog->RemoveOutputDevice(this); }

	virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
	{
		if ((Verbosity & ELogVerbosity::VerbosityMask) <= ELogVerbosity::Warning)
		{
			FScopeLock Lock(&Mutex);
			Messages.Add(FString(V));
		}
	}

	virtual bool CanBeUsedOnAnyThread() const override { return true; }
	virtual bool CanBeUsedOnMultipleThreads() const override { return true; }

	TArray<FString> GetMessages() const
	{
		FScopeLock Lock(&Mutex);
		return Messages;
	}

private:
	mutable FCriticalSection Mutex;
	TArray<FString> Messages;
};

/**
 * The editor as a user has it: an editor engine with its editor world, ticked by the engine loop on a fixed
 * step, and the Live Link client of the LiveLink module with one source whose subjects the tests push.
 */
class FLiveLinkControllerTest : public ::testing::Test
{
protected:
	static void SetUpTestSuite()
	{
		// The client exists while the LiveLink module is loaded, as in the editor.
		FModuleManager::Get().LoadModuleChecked(TEXT("LiveLink"));
	}

	void SetUp() override
	{
		LogCapture = MakeUnique<FControllerTestLogCapture>();
		FApp::SetUseFixedTimeStep(true);
		FApp::SetFixedDeltaTime(1.0 / 30.0);
		UUnrealEdEngine* Engine = NewObject<UUnrealEdEngine>(GetTransientPackage());
		Engine->AddToRoot();
		GEngine = GEditor = GUnrealEd = Engine;
		GEngine->Init(&GEngineLoop);
		World = GEditor->GetEditorWorldContext().World();
		ASSERT_NE(World, nullptr);
		ASSERT_EQ(World->WorldType, EWorldType::Editor);

		ASSERT_TRUE(IModularFeatures::Get().IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName));
		Client = &IModularFeatures::Get().GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName);
		Source = MakeShared<FLiveLinkTestSource>(TEXT("ControllerTest"));
		SourceGuid = Client->AddSource(Source);
		ASSERT_TRUE(SourceGuid.IsValid());
	}

	void TearDown() override
	{
		// The source goes with its subjects, so the next test starts with an empty client.
		Client->RemoveSource(SourceGuid);
		Frames(2);
		Source.Reset();
		GEngine->PreExit();
		GEngine->RemoveFromRoot();
		GEngine = nullptr;
		GEditor = nullptr;
		GUnrealEd = nullptr;
		CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS, true);
		ExpectOnlyTheDeclaredWarnings();
	}

	/** Declares a warning (or error) the test means to cause, by a part of its text. */
	void ExpectWarning(const TCHAR* Fragment) { ExpectedWarnings.Add(Fragment); }

	/** As the editor's test runner does: a warning or error nobody declared fails the test, so does a missing one. */
	void ExpectOnlyTheDeclaredWarnings()
	{
		const TArray<FString> Messages = LogCapture->GetMessages();
		LogCapture.Reset();
		TArray<bool> Seen;
		Seen.Init(false, ExpectedWarnings.Num());
		for (const FString& Message : Messages)
		{
			bool bDeclared = false;
			for (int32 Index = 0; Index < ExpectedWarnings.Num(); ++Index)
			{
				if (Message.Contains(ExpectedWarnings[Index]))
				{
					Seen[Index] = true;
					bDeclared = true;
				}
			}
			EXPECT_TRUE(bDeclared) << "unexpected warning or error: " << ToUtf8(Message);
		}
		for (int32 Index = 0; Index < ExpectedWarnings.Num(); ++Index)
		{
			EXPECT_TRUE(Seen[Index]) << "expected a warning containing: " << ToUtf8(ExpectedWarnings[Index]);
		}
	}

	/** Runs whole engine frames: the client takes the pushed data, then the editor world ticks. */
	static void Frames(int32 Count)
	{
		for (int32 Frame = 0; Frame < Count; ++Frame)
		{
			GEngineLoop.Tick();
		}
	}

	FLiveLinkSubjectKey KeyOf(FName SubjectName) const { return FLiveLinkSubjectKey(SourceGuid, SubjectName); }

	template <class StaticDataType>
	void PushStatic(FName SubjectName, TSubclassOf<ULiveLinkRole> Role, const StaticDataType& StaticData)
	{
		FLiveLinkStaticDataStruct Data(StaticDataType::StaticStruct());
		*Data.Cast<StaticDataType>() = StaticData;
		Client->PushSubjectStaticData_AnyThread(KeyOf(SubjectName), Role, MoveTemp(Data));
	}

	/** Pushes a frame stamped now, so that it is the newest one when the next engine frame evaluates. */
	template <class FrameDataType>
	void PushFrame(FName SubjectName, const FrameDataType& FrameData)
	{
		FLiveLinkFrameDataStruct Data(FrameDataType::StaticStruct());
		*Data.Cast<FrameDataType>() = FrameData;
		Data.Cast<FrameDataType>()->WorldTime = FLiveLinkWorldTime();
		Client->PushSubjectFrameData_AnyThread(KeyOf(SubjectName), MoveTemp(Data));
	}

	/** A Live Link controller added to an actor placed in the editor world, the way a user adds one. */
	ULiveLinkComponentController* AddController(AActor* Actor, FName SubjectName, TSubclassOf<ULiveLinkRole> Role)
	{
		ULiveLinkComponentController* Controller = NewObject<ULiveLinkComponentController>(Actor);
		Controller->SetSubjectRepresentation(FLiveLinkSubjectRepresentation{FLiveLinkSubjectName(SubjectName), Role});
		Controller->RegisterComponent();
		return Controller;
	}

	static FLiveLinkTransformFrameData MakeTransformFrame(const FTransform& Transform)
	{
		FLiveLinkTransformFrameData Frame;
		Frame.Transform = Transform;
		return Frame;
	}

	TUniquePtr<FControllerTestLogCapture> LogCapture;
	TArray<FString> ExpectedWarnings;
	UWorld* World = nullptr;
	ILiveLinkClient* Client = nullptr;
	TSharedPtr<FLiveLinkTestSource> Source;
	FGuid SourceGuid;
};

/** Near-equality of vectors, with the vectors printed on failure. */
inline ::testing::AssertionResult VectorsNear(const FVector& Actual, const FVector& Expected, double Tolerance = 1e-3)
{
	if (Actual.Equals(Expected, Tolerance))
	{
		return ::testing::AssertionSuccess();
	}
	return ::testing::AssertionFailure() << "got " << ToUtf8(Actual.ToString()) << ", expected "
										 << ToUtf8(Expected.ToString());
}

/** Near-equality of rotations, with the rotators printed on failure. */
inline ::testing::AssertionResult RotatorsNear(
	const FRotator& Actual, const FRotator& Expected, double Tolerance = 1e-3)
{
	if (Actual.Equals(Expected, Tolerance))
	{
		return ::testing::AssertionSuccess();
	}
	return ::testing::AssertionFailure() << "got " << ToUtf8(Actual.ToString()) << ", expected "
										 << ToUtf8(Expected.ToString());
}

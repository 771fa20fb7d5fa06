// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "HAL/PlatformTime.h"
#include "LiveLinkClient.h"
#include "LiveLinkTestSource.h"
#include "LiveLinkTestSourceFactory.h"
#include "LiveLinkTestSourceSettings.h"
#include "LiveLinkTestUtils.h"
#include "Misc/App.h"
#include "Misc/CoreDelegates.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"
#include "Roles/LiveLinkTransformRole.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"

#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

using namespace LiveLinkTestUtils;

namespace
{
	/** A client of its own per test, on an application clock the test sets. */
	class FLiveLinkClientTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			PreviousTime = FApp::GetCurrentTime();
			FApp::SetCurrentTime(100.0);
			Client = MakeUnique<FLiveLinkClient>();
		}

		void TearDown() override
		{
			Client.Reset();
			FApp::SetCurrentTime(PreviousTime);
		}

		/** Adds a test source and returns it with its GUID. */
		TSharedPtr<FLiveLinkTestSource> AddTestSource(
			FGuid& OutGuid, const TCHAR* ConnectionString = TEXT("10.0.0.1:9001"))
		{
			TSharedPtr<FLiveLinkTestSource> Source = MakeShared<FLiveLinkTestSource>(ConnectionString);
			OutGuid = Client->AddSource(Source);
			return Source;
		}

		/** Pushes camera static data for a subject. */
		void PushCameraStatic(const FLiveLinkSubjectKey& Key)
		{
			Client->PushSubjectStaticData_AnyThread(Key, ULiveLinkCameraRole::StaticClass(), MakeCameraStatic());
		}

		bool Evaluate(FName Subject, FLiveLinkSubjectFrameData& OutFrame)
		{
			return Client->EvaluateFrame_AnyThread(Subject, ULiveLinkCameraRole::StaticClass(), OutFrame);
		}

		ULiveLinkSourceSettings* SettingsOf(const FGuid& Guid) { return Client->GetSourceSettings(Guid); }

		TUniquePtr<FLiveLinkClient> Client;
		double PreviousTime = 0.0;
	};

	const FName CameraName(TEXT("Camera"));
} // namespace

TEST_F(FLiveLinkClientTest, AddSourceCreatesSettingsThenHandsOverClientThenSettings)
{
	FGuid AddedGuid;
	const FDelegateHandle Added = Client->OnLiveLinkSourceAdded().AddLambda(
		[&AddedGuid](FGuid Guid)
		{
			AddedGuid = Guid;
		});
	FGuid Guid;
	TSharedPtr<FLiveLinkTestSource> Source = AddTestSource(Guid);
	Client->OnLiveLinkSourceAdded().Remove(Added);

	ASSERT_TRUE(Guid.IsValid());
	EXPECT_EQ(AddedGuid, Guid);
	EXPECT_EQ(Source->GetSourceGuid(), Guid);
	EXPECT_EQ(Source->GetClient(), Client.Get());
	const TArray<FString> Calls = Source->GetCalls();
	ASSERT_GE(Calls.Num(), 2);
	EXPECT_EQ(ToUtf8(Calls[0]), "ReceiveClient");
	EXPECT_EQ(ToUtf8(Calls[1]), "InitializeSettings");

	ULiveLinkSourceSettings* Settings = SettingsOf(Guid);
	ASSERT_NE(Settings, nullptr);
	EXPECT_EQ(Settings, Source->GetReceivedSettings());
	EXPECT_TRUE(Settings->IsA(ULiveLinkTestSourceSettings::StaticClass()));
	EXPECT_EQ(Settings->GetOuter(), static_cast<UObject*>(GetTransientPackage()));
	EXPECT_EQ(Settings->Factory.Get(), ULiveLinkTestSourceFactory::StaticClass());
	EXPECT_EQ(ToUtf8(Settings->ConnectionString), "10.0.0.1:9001");

	// The client keeps the settings alive.
	CollectGarbage(RF_NoFlags);
	EXPECT_TRUE(IsValid(Settings));
	EXPECT_EQ(SettingsOf(Guid), Settings);

	EXPECT_EQ(Client->GetSources(), TArray<FGuid>({Guid}));
	EXPECT_TRUE(Client->HasSourceBeenAdded(Source));
	EXPECT_EQ(ToUtf8(Client->GetSourceType(Guid).ToString()), "Test Source");
	EXPECT_EQ(ToUtf8(Client->GetSourceMachineName(Guid).ToString()), "10.0.0.1:9001");
	EXPECT_EQ(ToUtf8(Client->GetSourceStatus(Guid).ToString()), "Active");
	EXPECT_TRUE(Client->IsSourceStillValid(Guid));
	EXPECT_EQ(Client->GetSourceSettings(FGuid::NewGuid()), nullptr);
}

TEST_F(FLiveLinkClientTest, SourcesAreUpdatedOncePerTick)
{
	FGuid Guid;
	TSharedPtr<FLiveLinkTestSource> Source = AddTestSource(Guid);
	EXPECT_EQ(Source->CountCalls(TEXT("Update")), 0);
	Client->ForceTick();
	Client->ForceTick();
	FCoreDelegates::OnSamplingInput.Broadcast();
	EXPECT_EQ(Source->CountCalls(TEXT("Update")), 3);
}

TEST_F(FLiveLinkClientTest, RemovalWaitsForTheSourceToAgreeOnLaterTicks)
{
	FGuid Guid;
	TSharedPtr<FLiveLinkTestSource> Source = AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(35.f));
	Client->ForceTick();
	ASSERT_EQ(Client->GetSubjects(true, true), TArray<FLiveLinkSubjectKey>({Key}));

	TArray<FString> Events;
	const FDelegateHandle SourceRemoved = Client->OnLiveLinkSourceRemoved().AddLambda(
		[&Events](FGuid)
		{
			Events.Add(TEXT("SourceRemoved"));
		});
	const FDelegateHandle SubjectRemoved = Client->OnLiveLinkSubjectRemoved().AddLambda(
		[&Events](FLiveLinkSubjectKey)
		{
			Events.Add(TEXT("SubjectRemoved"));
		});

	Source->RefuseShutdownRequests(2);
	Client->RemoveSource(Guid);
	// Nothing happens before the next tick, except that the source is no longer listed as active.
	EXPECT_EQ(Source->CountCalls(TEXT("RequestSourceShutdown")), 0);
	EXPECT_TRUE(Client->GetSources().IsEmpty());
	EXPECT_EQ(Client->GetSources(true), TArray<FGuid>({Guid}));
	const int32 UpdatesBefore = Source->CountCalls(TEXT("Update"));

	Client->ForceTick();
	EXPECT_EQ(Source->CountCalls(TEXT("RequestSourceShutdown")), 1);
	EXPECT_EQ(Client->GetSources(true), TArray<FGuid>({Guid}));
	EXPECT_EQ(Client->GetSubjects(true, true).Num(), 1);
	Client->ForceTick();
	EXPECT_EQ(Source->CountCalls(TEXT("RequestSourceShutdown")), 2);
	EXPECT_EQ(Client->GetSources(true), TArray<FGuid>({Guid}));
	Client->ForceTick();
	EXPECT_EQ(Source->CountCalls(TEXT("RequestSourceShutdown")), 3);
	EXPECT_TRUE(Client->GetSources(true).IsEmpty());
	EXPECT_TRUE(Client->GetSubjects(true, true).IsEmpty());
	EXPECT_EQ(Client->GetSourceSettings(Guid), nullptr);
	// A source that is shutting down is not updated any more.
	EXPECT_EQ(Source->CountCalls(TEXT("Update")), UpdatesBefore);

	Client->OnLiveLinkSourceRemoved().Remove(SourceRemoved);
	Client->OnLiveLinkSubjectRemoved().Remove(SubjectRemoved);
	EXPECT_EQ(ToUtf8(FString::Join(Events, TEXT(","))), "SourceRemoved,SubjectRemoved");
	// The client released the source: only this test still holds it.
	EXPECT_TRUE(Source.IsUnique());
}

TEST_F(FLiveLinkClientTest, PushesAreAppliedOnTheNextTick)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	for (int32 Index = 0; Index < 3; ++Index)
	{
		Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(10.f + Index));
	}
	EXPECT_TRUE(Client->GetSubjects(true, true).IsEmpty());
	EXPECT_TRUE(Client->HasPendingSubjectFrames());
	FLiveLinkSubjectFrameData Frame;
	EXPECT_FALSE(Evaluate(CameraName, Frame));

	Client->ForceTick();
	EXPECT_FALSE(Client->HasPendingSubjectFrames());
	EXPECT_EQ(Client->GetSubjects(false, false), TArray<FLiveLinkSubjectKey>({Key}));
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 3);
	EXPECT_EQ(Client->GetSubjectRole_AnyThread(Key).Get(), ULiveLinkCameraRole::StaticClass());
	EXPECT_TRUE(Client->DoesSubjectSupportsRole_AnyThread(Key, ULiveLinkTransformRole::StaticClass()));
	ASSERT_NE(Client->GetSubjectStaticData_AnyThread(Key), nullptr);
	EXPECT_TRUE(
		Client->GetSubjectStaticData_AnyThread(Key)->Cast<FLiveLinkCameraStaticData>()->bIsFocalLengthSupported);
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 12.f);
	EXPECT_NE(Frame.StaticData.Cast<FLiveLinkCameraStaticData>(), nullptr);
	EXPECT_TRUE(Client->IsSubjectValid(Key));
	EXPECT_EQ(Client->GetSubjectState(CameraName), ELiveLinkSubjectState::Connected);
}

TEST_F(FLiveLinkClientTest, StaticDataClearsTheBufferedFrames)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(20.f));
	Client->ForceTick();
	ASSERT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 1);

	// Frames pushed before new static data are cleared with the old ones.
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(21.f));
	PushCameraStatic(Key);
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 0);
	EXPECT_FALSE(Client->IsSubjectValid(Key));
	FLiveLinkSubjectFrameData Frame;
	EXPECT_FALSE(Evaluate(CameraName, Frame));

	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(22.f));
	Client->ForceTick();
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 22.f);
}

TEST_F(FLiveLinkClientTest, FramesWithoutStaticDataAreDropped)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(30.f));
	EXPECT_FALSE(Client->HasPendingSubjectFrames());
	Client->ForceTick();
	EXPECT_TRUE(Client->GetSubjects(true, true).IsEmpty());

	PushCameraStatic(Key);
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 0);

	// A source that was never added cannot push at all.
	const FLiveLinkSubjectKey Stranger(FGuid::NewGuid(), CameraName);
	Client->PushSubjectStaticData_AnyThread(Stranger, ULiveLinkCameraRole::StaticClass(), MakeCameraStatic());
	Client->PushSubjectFrameData_AnyThread(Stranger, MakeCameraFrame(1.f));
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjects(true, true), TArray<FLiveLinkSubjectKey>({Key}));
}

TEST_F(FLiveLinkClientTest, BufferKeepsTheNewestFramesUpToTheSourcesLimit)
{
	FGuid Guid;
	AddTestSource(Guid);
	SettingsOf(Guid)->Mode = ELiveLinkSourceMode::Latest;
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->ForceTick();
	for (int32 Index = 0; Index < 55; ++Index)
	{
		Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(static_cast<float>(Index)));
	}
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 10);
	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 54.f);
	SettingsOf(Guid)->BufferSettings.LatestOffset = 9;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 45.f);

	SettingsOf(Guid)->BufferSettings.MaxNumberOfFrameToBuffered = 3;
	Client->ForceTick();
	for (int32 Index = 0; Index < 5; ++Index)
	{
		Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(100.f + Index));
	}
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 3);
}

TEST_F(FLiveLinkClientTest, ANewRoleMakesANewSubject)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	Client->PushSubjectStaticData_AnyThread(Key, ULiveLinkTransformRole::StaticClass(),
		FLiveLinkStaticDataStruct(FLiveLinkTransformStaticData::StaticStruct()));
	Client->ForceTick();
	ASSERT_EQ(Client->GetSubjectRole_AnyThread(Key).Get(), ULiveLinkTransformRole::StaticClass());

	TArray<FString> Events;
	const FDelegateHandle Added = Client->OnLiveLinkSubjectAdded().AddLambda(
		[&Events](FLiveLinkSubjectKey)
		{
			Events.Add(TEXT("Added"));
		});
	const FDelegateHandle Removed = Client->OnLiveLinkSubjectRemoved().AddLambda(
		[&Events](FLiveLinkSubjectKey)
		{
			Events.Add(TEXT("Removed"));
		});
	PushCameraStatic(Key);
	Client->ForceTick();
	Client->OnLiveLinkSubjectAdded().Remove(Added);
	Client->OnLiveLinkSubjectRemoved().Remove(Removed);

	EXPECT_EQ(ToUtf8(FString::Join(Events, TEXT(","))), "Removed,Added");
	EXPECT_EQ(Client->GetSubjectRole_AnyThread(Key).Get(), ULiveLinkCameraRole::StaticClass());
	EXPECT_EQ(Client->GetSubjects(true, true).Num(), 1);
}

TEST_F(FLiveLinkClientTest, StaticDataThatDoesNotFitTheRoleIsRejected)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	FLogCapture Log;
	Client->PushSubjectStaticData_AnyThread(Key, ULiveLinkCameraRole::StaticClass(),
		FLiveLinkStaticDataStruct(FLiveLinkTransformStaticData::StaticStruct()));
	Client->ForceTick();
	EXPECT_TRUE(Client->GetSubjects(true, true).IsEmpty());
	EXPECT_EQ(Log.Count(TEXT("Static data for subject 'Camera' was dropped: it is not valid for the role")), 1);
}

TEST_F(FLiveLinkClientTest, FourThreadsPushWhileTheGameThreadTicksAndEvaluates)
{
	constexpr int32 NumThreads = 4;
	constexpr int32 FramesPerThread = 2500;
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Shared(Guid, TEXT("Shared"));
	PushCameraStatic(Shared);
	TArray<FLiveLinkSubjectKey> Own;
	for (int32 Thread = 0; Thread < NumThreads; ++Thread)
	{
		Own.Add(FLiveLinkSubjectKey(Guid, FName(*FString::Printf(TEXT("Thread%d"), Thread))));
		PushCameraStatic(Own.Last());
	}
	Client->ForceTick();
	const double Start = FPlatformTime::Seconds();

	std::atomic<int32> Finished{0};
	std::vector<std::thread> Pushers;
	for (int32 Thread = 0; Thread < NumThreads; ++Thread)
	{
		Pushers.emplace_back(
			[this, &Finished, &Own, Shared, Thread, Start]()
			{
				for (int32 Index = 0; Index < FramesPerThread; ++Index)
				{
					// Times grow with the index, so the newest frame of each subject is known.
					const double Time = Start + Index * 1e-4;
					Client->PushSubjectFrameData_AnyThread(
						Own[Thread], MakeCameraFrameAt(Time, static_cast<float>(Index)));
					Client->PushSubjectFrameData_AnyThread(Shared, MakeCameraFrameAt(Time, static_cast<float>(Index)));
				}
				++Finished;
			});
	}
	int32 Ticks = 0;
	FLiveLinkSubjectFrameData Frame;
	while (Finished.load() < NumThreads)
	{
		Client->ForceTick();
		Client->EvaluateFrame_AnyThread(FName(TEXT("Shared")), ULiveLinkCameraRole::StaticClass(), Frame);
		++Ticks;
	}
	for (std::thread& Pusher : Pushers)
	{
		Pusher.join();
	}
	Client->ForceTick();

	EXPECT_GT(Ticks, 0);
	for (const FLiveLinkSubjectKey& Key : Own)
	{
		EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 10);
		ASSERT_TRUE(Client->EvaluateFrameAtWorldTime_AnyThread(
			Key.SubjectName, Start + 10.0, ULiveLinkCameraRole::StaticClass(), Frame));
		EXPECT_EQ(FocalLengthOf(Frame), static_cast<float>(FramesPerThread - 1)) << ToUtf8(Key.SubjectName.ToString());
	}
	EXPECT_EQ(Client->GetSubjectFrameTimes(Shared).Num(), 10);
	ASSERT_TRUE(Client->EvaluateFrameAtWorldTime_AnyThread(
		FName(TEXT("Shared")), Start + 10.0, ULiveLinkCameraRole::StaticClass(), Frame));
	EXPECT_EQ(FocalLengthOf(Frame), static_cast<float>(FramesPerThread - 1));
	EXPECT_FALSE(Client->HasPendingSubjectFrames());
}

TEST_F(FLiveLinkClientTest, EngineTimeReadsTheFrameAtTheTickMinusTheOffset)
{
	FGuid Guid;
	AddTestSource(Guid);
	ASSERT_EQ(SettingsOf(Guid)->Mode, ELiveLinkSourceMode::EngineTime);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	const double Now = FPlatformTime::Seconds();
	// Pushed out of order: the buffer sorts them by time.
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrameAt(Now - 1.0, 30.f, 300.0));
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrameAt(Now - 3.0, 10.f, 100.0));
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrameAt(Now - 2.0, 20.f, 200.0));
	Client->ForceTick();
	const TArray<FLiveLinkTime> Times = Client->GetSubjectFrameTimes(Key);
	ASSERT_EQ(Times.Num(), 3);
	EXPECT_LT(Times[0].WorldTime, Times[1].WorldTime);
	EXPECT_LT(Times[1].WorldTime, Times[2].WorldTime);

	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 30.f);

	// 1.5 s behind the tick falls between the second and the third frame (the tick came less than 0.5 s after Now).
	SettingsOf(Guid)->BufferSettings.EngineTimeOffset = 1.5f;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_GT(FocalLengthOf(Frame), 20.f);
	EXPECT_LT(FocalLengthOf(Frame), 30.f);

	SettingsOf(Guid)->BufferSettings.EngineTimeOffset = 5.f;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 10.f);
}

TEST_F(FLiveLinkClientTest, WorldTimeEvaluationInterpolatesTransformAndLens)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	const double Now = FPlatformTime::Seconds();
	FLiveLinkFrameDataStruct First = MakeCameraFrameAt(Now - 0.2, 20.f, 200.0);
	FLiveLinkFrameDataStruct Second = MakeCameraFrameAt(Now - 0.1, 30.f, 300.0);
	First.Cast<FLiveLinkCameraFrameData>()->Transform.SetRotation(FQuat(FRotator(0, 0, 0)));
	Second.Cast<FLiveLinkCameraFrameData>()->Transform.SetRotation(FQuat(FRotator(0, 90, 0)));
	Second.Cast<FLiveLinkCameraFrameData>()->ProjectionMode = ELiveLinkCameraProjectionMode::Orthographic;
	First.GetBaseData()->PropertyValues = {};
	Client->PushSubjectFrameData_AnyThread(Key, MoveTemp(First));
	Client->PushSubjectFrameData_AnyThread(Key, MoveTemp(Second));
	Client->ForceTick();

	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(
		Client->EvaluateFrameAtWorldTime_AnyThread(CameraName, Now - 0.175, ULiveLinkCameraRole::StaticClass(), Frame));
	const FLiveLinkCameraFrameData* Camera = Frame.FrameData.Cast<FLiveLinkCameraFrameData>();
	ASSERT_NE(Camera, nullptr);
	EXPECT_NEAR(Camera->FocalLength, 22.5f, 1e-3f);
	EXPECT_NEAR(Camera->Transform.GetLocation().X, 225.0, 1e-6);
	EXPECT_NEAR(Camera->Transform.GetRotation().Rotator().Yaw, 22.5, 1e-6);
	EXPECT_EQ(Camera->ProjectionMode, ELiveLinkCameraProjectionMode::Perspective);
	EXPECT_NEAR(Camera->WorldTime.GetOffsettedTime(), Now - 0.175, 1e-9);

	// Before every frame the oldest is read; after every frame the newest.
	ASSERT_TRUE(
		Client->EvaluateFrameAtWorldTime_AnyThread(CameraName, Now - 5.0, ULiveLinkCameraRole::StaticClass(), Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 20.f);
	ASSERT_TRUE(
		Client->EvaluateFrameAtWorldTime_AnyThread(CameraName, Now + 5.0, ULiveLinkCameraRole::StaticClass(), Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 30.f);
}

TEST_F(FLiveLinkClientTest, LatestModeReadsTheLastFramePushed)
{
	FGuid Guid;
	AddTestSource(Guid);
	SettingsOf(Guid)->Mode = ELiveLinkSourceMode::Latest;
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	const double Now = FPlatformTime::Seconds();
	// The last frame pushed carries the oldest time: Latest ignores times.
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrameAt(Now, 50.f));
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrameAt(Now - 1.0, 51.f));
	Client->ForceTick();
	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 51.f);

	SettingsOf(Guid)->Mode = ELiveLinkSourceMode::EngineTime;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 50.f);
}

TEST_F(FLiveLinkClientTest, SceneTimeEvaluationInterpolatesBetweenTimecodes)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	const FFrameRate Rate(24, 1);
	FLiveLinkFrameDataStruct First = MakeCameraFrame(10.f);
	First.GetBaseData()->MetaData.SceneTime = FQualifiedFrameTime(FFrameTime(100), Rate);
	FLiveLinkFrameDataStruct Second = MakeCameraFrame(20.f);
	Second.GetBaseData()->MetaData.SceneTime = FQualifiedFrameTime(FFrameTime(101), Rate);
	Client->PushSubjectFrameData_AnyThread(Key, MoveTemp(First));
	Client->PushSubjectFrameData_AnyThread(Key, MoveTemp(Second));
	Client->ForceTick();

	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Client->EvaluateFrameAtSceneTime_AnyThread(CameraName,
		FQualifiedFrameTime(FFrameTime(FFrameNumber(100), 0.5f), Rate), ULiveLinkCameraRole::StaticClass(), Frame));
	EXPECT_NEAR(FocalLengthOf(Frame), 15.f, 1e-3f);
	EXPECT_EQ(Frame.FrameData.GetBaseData()->MetaData.SceneTime.Time, FFrameTime(FFrameNumber(100), 0.5f));
	// The same time at another rate reads the same frame.
	ASSERT_TRUE(Client->EvaluateFrameAtSceneTime_AnyThread(CameraName,
		FQualifiedFrameTime(FFrameTime(201), FFrameRate(48, 1)), ULiveLinkCameraRole::StaticClass(), Frame));
	EXPECT_NEAR(FocalLengthOf(Frame), 15.f, 1e-3f);
}

TEST_F(FLiveLinkClientTest, SubjectsAreReadOnlyAsTheirRoleOrItsParents)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(70.f));
	Client->ForceTick();
	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Client->EvaluateFrame_AnyThread(CameraName, ULiveLinkTransformRole::StaticClass(), Frame));
	EXPECT_NE(Frame.FrameData.Cast<FLiveLinkTransformFrameData>(), nullptr);
	EXPECT_EQ(FocalLengthOf(Frame), 70.f);

	const FLiveLinkSubjectKey TransformKey(Guid, TEXT("Tracker"));
	Client->PushSubjectStaticData_AnyThread(TransformKey, ULiveLinkTransformRole::StaticClass(),
		FLiveLinkStaticDataStruct(FLiveLinkTransformStaticData::StaticStruct()));
	Client->PushSubjectFrameData_AnyThread(
		TransformKey, FLiveLinkFrameDataStruct(FLiveLinkTransformFrameData::StaticStruct()));
	Client->ForceTick();
	EXPECT_FALSE(Client->EvaluateFrame_AnyThread(FName(TEXT("Tracker")), ULiveLinkCameraRole::StaticClass(), Frame));
	EXPECT_TRUE(Client->EvaluateFrame_AnyThread(FName(TEXT("Tracker")), ULiveLinkTransformRole::StaticClass(), Frame));
	EXPECT_FALSE(Client->EvaluateFrame_AnyThread(FName(TEXT("Nobody")), ULiveLinkTransformRole::StaticClass(), Frame));
	EXPECT_EQ(Client->GetSubjectsSupportingRole(ULiveLinkCameraRole::StaticClass(), true, true),
		TArray<FLiveLinkSubjectKey>({Key}));
}

TEST_F(FLiveLinkClientTest, SubjectsWithoutFramesForHalfASecondBecomeInvalidButKeepTheirLastFrame)
{
	FGuid Guid;
	TSharedPtr<FLiveLinkTestSource> Source = AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(40.f));
	Client->ForceTick();
	EXPECT_TRUE(Client->IsSubjectValid(Key));
	EXPECT_TRUE(Client->IsSubjectValid(CameraName));

	FApp::SetCurrentTime(100.5);
	Client->ForceTick();
	EXPECT_TRUE(Client->IsSubjectValid(Key));
	EXPECT_EQ(Client->GetSubjectState(CameraName), ELiveLinkSubjectState::Connected);

	FApp::SetCurrentTime(100.6);
	Client->ForceTick();
	EXPECT_FALSE(Client->IsSubjectValid(Key));
	EXPECT_FALSE(Client->IsSubjectValid(CameraName));
	EXPECT_EQ(Client->GetSubjectState(CameraName), ELiveLinkSubjectState::Unresponsive);
	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 40.f);
	EXPECT_EQ(Client->GetSubjects(true, true), TArray<FLiveLinkSubjectKey>({Key}));

	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(41.f));
	Client->ForceTick();
	EXPECT_TRUE(Client->IsSubjectValid(Key));

	Source->SetValid(false);
	EXPECT_EQ(Client->GetSubjectState(CameraName), ELiveLinkSubjectState::Disconnected);
	EXPECT_EQ(Client->GetSubjectState(FName(TEXT("Nobody"))), ELiveLinkSubjectState::InvalidOrDisabled);
}

TEST_F(FLiveLinkClientTest, OnlyOneSubjectOfANameIsEnabled)
{
	FGuid First;
	FGuid Second;
	AddTestSource(First);
	AddTestSource(Second, TEXT("10.0.0.2:9001"));
	const FLiveLinkSubjectKey FirstKey(First, CameraName);
	const FLiveLinkSubjectKey SecondKey(Second, CameraName);
	PushCameraStatic(FirstKey);
	Client->PushSubjectFrameData_AnyThread(FirstKey, MakeCameraFrame(1.f));
	Client->ForceTick();
	PushCameraStatic(SecondKey);
	Client->PushSubjectFrameData_AnyThread(SecondKey, MakeCameraFrame(2.f));
	Client->ForceTick();

	EXPECT_TRUE(Client->IsSubjectEnabled(FirstKey, false));
	EXPECT_FALSE(Client->IsSubjectEnabled(SecondKey, false));
	EXPECT_EQ(Client->GetSubjects(false, false), TArray<FLiveLinkSubjectKey>({FirstKey}));
	EXPECT_EQ(Client->GetSubjects(true, false).Num(), 2);
	FLiveLinkSubjectFrameData Frame;
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 1.f);

	Client->SetSubjectEnabled(SecondKey, true);
	EXPECT_FALSE(Client->IsSubjectEnabled(FirstKey, false));
	EXPECT_TRUE(Client->IsSubjectEnabled(SecondKey, false));
	ASSERT_TRUE(Evaluate(CameraName, Frame));
	EXPECT_EQ(FocalLengthOf(Frame), 2.f);

	Client->SetSubjectEnabled(SecondKey, false);
	EXPECT_FALSE(Client->IsSubjectEnabled(CameraName));
	EXPECT_FALSE(Evaluate(CameraName, Frame));
}

TEST_F(FLiveLinkClientTest, RemovedSubjectsAndClearedFramesGoOnTheNextTick)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(1.f));
	Client->ForceTick();

	Client->ClearSubjectsFrames_AnyThread(CameraName);
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 1);
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 0);

	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(2.f));
	Client->ForceTick();
	Client->ClearAllSubjectsFrames_AnyThread();
	Client->ForceTick();
	EXPECT_EQ(Client->GetSubjectFrameTimes(Key).Num(), 0);

	Client->RemoveSubject_AnyThread(Key);
	// Frames after the removal have no static data to go with.
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(3.f));
	Client->ForceTick();
	EXPECT_TRUE(Client->GetSubjects(true, true).IsEmpty());
}

TEST_F(FLiveLinkClientTest, CreateSourceFromAPresetChecksItsFactory)
{
	FLogCapture Log;
	ULiveLinkTestSourceSettings* Settings = NewObject<ULiveLinkTestSourceSettings>(GetTransientPackage());
	Settings->ConnectionString = TEXT("192.168.1.5:40000");
	Settings->Label = TEXT("Stage A");
	Settings->Mode = ELiveLinkSourceMode::Latest;
	FLiveLinkSourcePreset Preset;
	Preset.Guid = FGuid::NewGuid();
	Preset.Settings = Settings;
	Preset.SourceType = FText::FromString(TEXT("Test Source"));

	EXPECT_FALSE(Client->CreateSource(Preset));
	EXPECT_EQ(Log.Count(TEXT("Create Source Failure: The factory is not defined.")), 1);

	Settings->Factory = ULiveLinkSourceFactory::StaticClass();
	EXPECT_FALSE(Client->CreateSource(Preset));
	EXPECT_EQ(Log.Count(TEXT("Create Source Failure: The factory is not defined.")), 2);

	Settings->Factory = ULiveLinkTestSourceFactory::StaticClass();
	Settings->ConnectionString = TEXT("refuse");
	EXPECT_FALSE(Client->CreateSource(Preset));
	EXPECT_EQ(Log.Count(TEXT("Create Source Failure: The source couldn't be created by the factory.")), 1);

	FLiveLinkSourcePreset NoSettings = Preset;
	NoSettings.Settings = nullptr;
	EXPECT_FALSE(Client->CreateSource(NoSettings));
	EXPECT_EQ(Log.Count(TEXT("Create Source Failure: The settings are not defined.")), 1);
	FLiveLinkSourcePreset NoGuid = Preset;
	NoGuid.Guid.Invalidate();
	EXPECT_FALSE(Client->CreateSource(NoGuid));
	EXPECT_EQ(Log.Count(TEXT("Create Source Failure: The guid is invalid.")), 1);
	EXPECT_TRUE(Client->GetSources(true).IsEmpty());

	FLiveLinkTestSource::ForgetCreatedByFactory();
	Settings->ConnectionString = TEXT("192.168.1.5:40000");
	ASSERT_TRUE(Client->CreateSource(Preset));
	EXPECT_EQ(Client->GetSources(), TArray<FGuid>({Preset.Guid}));
	const TArray<TWeakPtr<FLiveLinkTestSource>> Created = FLiveLinkTestSource::GetCreatedByFactory();
	ASSERT_EQ(Created.Num(), 1);
	TSharedPtr<FLiveLinkTestSource> Source = Created[0].Pin();
	ASSERT_TRUE(Source.IsValid());
	EXPECT_EQ(Source->GetSourceGuid(), Preset.Guid);
	EXPECT_EQ(ToUtf8(Source->GetConnectionString()), "192.168.1.5:40000");
	ASSERT_GE(Source->GetCalls().Num(), 2);
	EXPECT_EQ(ToUtf8(Source->GetCalls()[0]), "ReceiveClient");
	EXPECT_EQ(ToUtf8(Source->GetCalls()[1]), "InitializeSettings");

	// The client works on a copy of the preset's settings.
	ULiveLinkTestSourceSettings* Copy = Cast<ULiveLinkTestSourceSettings>(Client->GetSourceSettings(Preset.Guid));
	ASSERT_NE(Copy, nullptr);
	EXPECT_NE(Copy, Settings);
	EXPECT_EQ(ToUtf8(Copy->Label), "Stage A");
	EXPECT_EQ(Copy->Mode, ELiveLinkSourceMode::Latest);
	EXPECT_EQ(Copy->GetOuter(), static_cast<UObject*>(GetTransientPackage()));
	EXPECT_TRUE(Source->HadSettingsOfTestClass());

	EXPECT_FALSE(Client->CreateSource(Preset));
	EXPECT_EQ(Log.Count(TEXT("Create Source Failure: The guid already exist.")), 1);
}

TEST_F(FLiveLinkClientTest, CreateSourceMovesMatchingValuesIntoANewSettingsClass)
{
	ULiveLinkSourceSettings* Settings = NewObject<ULiveLinkSourceSettings>(GetTransientPackage());
	Settings->Factory = ULiveLinkTestSourceFactory::StaticClass();
	Settings->ConnectionString = TEXT("10.9.9.9:1234");
	Settings->Mode = ELiveLinkSourceMode::Latest;
	Settings->BufferSettings.MaxNumberOfFrameToBuffered = 4;
	FLiveLinkSourcePreset Preset;
	Preset.Guid = FGuid::NewGuid();
	Preset.Settings = Settings;

	ASSERT_TRUE(Client->CreateSource(Preset));
	ULiveLinkSourceSettings* Created = Client->GetSourceSettings(Preset.Guid);
	ASSERT_NE(Created, nullptr);
	EXPECT_TRUE(Created->IsA(ULiveLinkTestSourceSettings::StaticClass()));
	EXPECT_EQ(Created->Mode, ELiveLinkSourceMode::Latest);
	EXPECT_EQ(Created->BufferSettings.MaxNumberOfFrameToBuffered, 4);
	EXPECT_EQ(ToUtf8(Created->ConnectionString), "10.9.9.9:1234");
}

TEST_F(FLiveLinkClientTest, PresetsOfSourcesAndSubjectsCopyTheirSettings)
{
	FGuid Guid;
	AddTestSource(Guid);
	Cast<ULiveLinkTestSourceSettings>(SettingsOf(Guid))->Label = TEXT("Copied");
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	PushCameraStatic(Key);
	Client->ForceTick();

	UPackage* Outer = CreatePackage(TEXT("/Temp/LiveLinkClientTest"));
	const FLiveLinkSourcePreset SourcePreset = Client->GetSourcePreset(Guid, Outer);
	EXPECT_EQ(SourcePreset.Guid, Guid);
	ASSERT_NE(SourcePreset.Settings, nullptr);
	EXPECT_NE(SourcePreset.Settings.Get(), SettingsOf(Guid));
	EXPECT_EQ(SourcePreset.Settings->GetOuter(), static_cast<UObject*>(Outer));
	EXPECT_EQ(ToUtf8(Cast<ULiveLinkTestSourceSettings>(SourcePreset.Settings.Get())->Label), "Copied");
	EXPECT_EQ(ToUtf8(SourcePreset.SourceType.ToString()), "Test Source");

	const FLiveLinkSubjectPreset SubjectPreset = Client->GetSubjectPreset(Key, Outer);
	EXPECT_EQ(SubjectPreset.Key, Key);
	EXPECT_EQ(SubjectPreset.Role.Get(), ULiveLinkCameraRole::StaticClass());
	EXPECT_TRUE(SubjectPreset.bEnabled);
	ASSERT_NE(SubjectPreset.Settings, nullptr);
	EXPECT_EQ(SubjectPreset.Settings->GetOuter(), static_cast<UObject*>(Outer));

	// A subject made from its preset exists before any data arrives, and takes frames once static data does.
	FLiveLinkSubjectPreset Recreated = SubjectPreset;
	Recreated.Key.SubjectName = FName(TEXT("FromPreset"));
	ASSERT_TRUE(Client->CreateSubject(Recreated));
	EXPECT_TRUE(Client->GetSubjects(true, true).Contains(Recreated.Key));
	EXPECT_FALSE(Client->IsSubjectValid(Recreated.Key));
	EXPECT_FALSE(Client->CreateSubject(Recreated));
	PushCameraStatic(Recreated.Key);
	Client->PushSubjectFrameData_AnyThread(Recreated.Key, MakeCameraFrame(5.f));
	Client->ForceTick();
	EXPECT_TRUE(Client->IsSubjectValid(Recreated.Key));

	EXPECT_FALSE(Client->GetSourcePreset(FGuid::NewGuid(), Outer).Guid.IsValid());
}

TEST_F(FLiveLinkClientTest, DelegatesSeePushesAsTheyArriveAndDataOnceAdded)
{
	FGuid Guid;
	AddTestSource(Guid);
	const FLiveLinkSubjectKey Key(Guid, CameraName);
	std::atomic<int32> StaticReceived{0};
	std::atomic<int32> FramesReceived{0};
	FDelegateHandle StaticHandle;
	FDelegateHandle FrameHandle;
	Client->RegisterForFrameDataReceived(Key,
		FOnLiveLinkSubjectStaticDataReceived::FDelegate::CreateLambda(
			[&StaticReceived](FLiveLinkSubjectKey, TSubclassOf<ULiveLinkRole>, const FLiveLinkStaticDataStruct&)
			{
				++StaticReceived;
			}),
		FOnLiveLinkSubjectFrameDataReceived::FDelegate::CreateLambda(
			[&FramesReceived](FLiveLinkSubjectKey, const FLiveLinkFrameDataStruct&)
			{
				++FramesReceived;
			}),
		StaticHandle, FrameHandle);
	PushCameraStatic(Key);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(1.f));
	EXPECT_EQ(StaticReceived.load(), 1);
	EXPECT_EQ(FramesReceived.load(), 1);
	Client->ForceTick();

	int32 FramesAdded = 0;
	TSubclassOf<ULiveLinkRole> Role;
	FLiveLinkStaticDataStruct StaticCopy;
	FDelegateHandle StaticAdded;
	FDelegateHandle FrameAdded;
	ASSERT_TRUE(Client->RegisterForSubjectFrames(CameraName,
		FOnLiveLinkSubjectStaticDataAdded::FDelegate::CreateLambda(
			[](FLiveLinkSubjectKey, TSubclassOf<ULiveLinkRole>, const FLiveLinkStaticDataStruct&) {}),
		FOnLiveLinkSubjectFrameDataAdded::FDelegate::CreateLambda(
			[&FramesAdded](FLiveLinkSubjectKey, TSubclassOf<ULiveLinkRole>, const FLiveLinkFrameDataStruct& Frame)
			{
				FramesAdded += Frame.Cast<FLiveLinkCameraFrameData>() ? 1 : 0;
			}),
		StaticAdded, FrameAdded, Role, &StaticCopy));
	EXPECT_EQ(Role.Get(), ULiveLinkCameraRole::StaticClass());
	EXPECT_NE(StaticCopy.Cast<FLiveLinkCameraStaticData>(), nullptr);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(2.f));
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(3.f));
	EXPECT_EQ(FramesAdded, 0);
	Client->ForceTick();
	EXPECT_EQ(FramesAdded, 2);

	Client->UnregisterSubjectFramesHandle(CameraName, StaticAdded, FrameAdded);
	Client->UnregisterForFrameDataReceived(Key, StaticHandle, FrameHandle);
	Client->PushSubjectFrameData_AnyThread(Key, MakeCameraFrame(4.f));
	Client->ForceTick();
	EXPECT_EQ(FramesAdded, 2);
	EXPECT_EQ(FramesReceived.load(), 3);
	EXPECT_FALSE(Client->RegisterForSubjectFrames(FName(TEXT("Nobody")), FOnLiveLinkSubjectStaticDataAdded::FDelegate(),
		FOnLiveLinkSubjectFrameDataAdded::FDelegate(), StaticAdded, FrameAdded, Role));
}

TEST_F(FLiveLinkClientTest, ShutdownGivesUpOnASourceThatNeverAgreesAndSaysSo)
{
	FGuid Stubborn;
	FGuid Polite;
	TSharedPtr<FLiveLinkTestSource> StubbornSource = AddTestSource(Stubborn);
	TSharedPtr<FLiveLinkTestSource> PoliteSource = AddTestSource(Polite, TEXT("10.0.0.2:9001"));
	StubbornSource->RefuseShutdownRequests(MAX_int32);
	FLogCapture Log;
	const double Start = FPlatformTime::Seconds();
	Client->Shutdown(0.2);
	EXPECT_LT(FPlatformTime::Seconds() - Start, 5.0);
	EXPECT_TRUE(Client->GetSources(true).IsEmpty());
	EXPECT_EQ(PoliteSource->CountCalls(TEXT("RequestSourceShutdown")), 1);
	EXPECT_GE(StubbornSource->CountCalls(TEXT("RequestSourceShutdown")), 2);
	EXPECT_EQ(Log.Count(*FString::Printf(
				  TEXT("The Live Link source %s ('Test Source') did not agree to shut down within 0.2 seconds"),
				  *Stubborn.ToString())),
		1);
	EXPECT_EQ(Log.NumProblems(), 1) << ToUtf8(Log.ProblemsText());
}

TEST_F(FLiveLinkClientTest, TheClientTicksOnTheSamplingInputOfEachFrame)
{
	int32 Ticks = 0;
	const FDelegateHandle Handle = Client->OnLiveLinkTicked().AddLambda(
		[&Ticks]()
		{
			++Ticks;
		});
	FCoreDelegates::OnSamplingInput.Broadcast();
	FCoreDelegates::OnSamplingInput.Broadcast();
	Client->OnLiveLinkTicked().Remove(Handle);
	EXPECT_EQ(Ticks, 2);

	// A client that is gone no longer listens.
	Client.Reset();
	FCoreDelegates::OnSamplingInput.Broadcast();
	EXPECT_EQ(Ticks, 2);
}

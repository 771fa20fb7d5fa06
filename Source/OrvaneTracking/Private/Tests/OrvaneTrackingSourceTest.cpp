// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingSource.h"
#include "Common/UdpSocketBuilder.h"
#include "CoreMinimal.h"
#include "HAL/PlatformTime.h"
#include "ILiveLinkClient.h"
#include "IPAddress.h"
#include "LiveLinkSourceSettings.h"
#include "Misc/AutomationTest.h"
#include "OrvaneTrackingEndpoint.h"
#include "OrvaneTrackingSourceFactory.h"
#include "OrvaneTrackingSourceSettings.h"
#include "Roles/LiveLinkCameraRole.h"
#include "Roles/LiveLinkCameraTypes.h"
#include "SocketSubsystem.h"
#include "Sockets.h"
#include "Tests/OrvaneTrackingTestUtilities.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace OrvaneTrackingSourceTest
{
	constexpr EAutomationTestFlags TestFlags = EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter;

	/** A source on 127.0.0.1:Port added to the client, and its id. */
	struct FAddedSource
	{
		TSharedPtr<FOrvaneTrackingSource> Source;
		FGuid Guid;
	};

	FAddedSource AddSource(ILiveLinkClient& Client, uint16 Port)
	{
		const FString Text = FString::Printf(TEXT("127.0.0.1:%d"), Port);
		FIPv4Endpoint Endpoint;
		FString Error;
		FOrvaneTrackingEndpoint::Parse(Text, Endpoint, Error);
		FAddedSource Added;
		Added.Source = MakeShared<FOrvaneTrackingSource>(Text, Endpoint);
		Added.Guid = Client.AddSource(Added.Source);
		return Added;
	}

	bool WaitUntilReceiving(ILiveLinkClient& Client, const FOrvaneTrackingSource& Source, double TimeoutSeconds = 1.0)
	{
		return OrvaneTrackingTests::TickClientUntil(Client, TimeoutSeconds,
			[&Source]()
			{
				return Source.IsReceiving();
			});
	}

	/** The Live Link client, emptied of sources; null (and the test failed) when there is none. */
	ILiveLinkClient* GetClientWithoutSources(FAutomationTestBase& Test)
	{
		ILiveLinkClient* Client = OrvaneTrackingTests::GetClient();
		if (!Test.TestNotNull(TEXT("Live Link client"), Client) ||
			!Test.TestTrue(TEXT("No sources left over"), OrvaneTrackingTests::RemoveAllSources(*Client)))
		{
			return nullptr;
		}
		return Client;
	}

	bool EvaluateCamera(ILiveLinkClient& Client, FName Subject, FLiveLinkSubjectFrameData& OutData)
	{
		return Client.EvaluateFrame_AnyThread(Subject, ULiveLinkCameraRole::StaticClass(), OutData);
	}
} // namespace OrvaneTrackingSourceTest

IMPLEMENT_SIMPLE_AUTOMATION_TEST(
	FOrvaneTrackingSourceLoopbackTest, "Orvane.Tracking.Source.Loopback", OrvaneTrackingSourceTest::TestFlags)

bool FOrvaneTrackingSourceLoopbackTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneTrackingSourceTest;
	ILiveLinkClient* Client = GetClientWithoutSources(*this);
	if (!Client)
	{
		return false;
	}

	const uint16 Port = OrvaneTrackingTests::FindFreeUdpPort();
	const FAddedSource Added = AddSource(*Client, Port);
	TestTrue(TEXT("Source bound"), WaitUntilReceiving(*Client, *Added.Source));
	TestEqual(TEXT("Machine name is the endpoint"), Client->GetSourceMachineName(Added.Guid).ToString(),
		FString::Printf(TEXT("127.0.0.1:%d"), Port));
	TestTrue(TEXT("Waiting status"),
		Client->GetSourceStatus(Added.Guid).ToString().StartsWith(TEXT("Waiting for data on 127.0.0.1:")));

	TArray<uint8> FreeD;
	TestTrue(
		TEXT("FreeD vector 1 loaded"), OrvaneTrackingTests::LoadTestData(TEXT("FreeD/freed_d1_vector1.bin"), FreeD));
	for (int32 Repeat = 0; Repeat < 3; ++Repeat)
	{
		TestTrue(TEXT("FreeD sent"), OrvaneTrackingTests::SendDatagram(Port, FreeD));
	}

	const FName FreeDSubject(TEXT("FreeD 1"));
	FLiveLinkSubjectFrameData Data;
	TestTrue(TEXT("FreeD frames reach the client"), OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
														[Client, &FreeDSubject]()
														{
															return Client->GetSubjectFrameTimes(FreeDSubject).Num() ==
																   3;
														}));
	if (TestTrue(TEXT("FreeD subject evaluates"), EvaluateCamera(*Client, FreeDSubject, Data)))
	{
		const FLiveLinkCameraFrameData* Frame = Data.FrameData.Cast<FLiveLinkCameraFrameData>();
		const FLiveLinkCameraStaticData* Static = Data.StaticData.Cast<FLiveLinkCameraStaticData>();
		if (TestNotNull(TEXT("Camera frame"), Frame) && TestNotNull(TEXT("Camera static data"), Static))
		{
			TestTrue(TEXT("Location in cm, engine axes"),
				Frame->Transform.GetLocation().Equals(FVector(-200.025, 123.45, 150.0), 1e-4));
			const FRotator Rotation = Frame->Transform.Rotator();
			TestEqual(TEXT("Pitch is tilt"), Rotation.Pitch, -12.5, 1e-4);
			TestEqual(TEXT("Yaw is pan"), Rotation.Yaw, 90.0, 1e-4);
			TestEqual(TEXT("Roll"), Rotation.Roll, 0.5, 1e-4);
			TestFalse(TEXT("Raw zoom is no focal length"), Static->bIsFocalLengthSupported);
			TestFalse(TEXT("Field of view comes from focal length"), Static->bIsFieldOfViewSupported);
			TestEqual(TEXT("Raw encoder names"), Static->PropertyNames.Num(), 3);
			TestEqual(TEXT("Raw values"), Frame->PropertyValues.Num(), 3);
			if (Frame->PropertyValues.Num() == 3)
			{
				TestEqual(TEXT("Raw zoom"), Frame->PropertyValues[0], 2048.0f);
				TestEqual(TEXT("Raw focus"), Frame->PropertyValues[1], 65535.0f);
				TestEqual(TEXT("Raw spare"), Frame->PropertyValues[2], 280.0f);
			}
		}
	}

	TArray<uint8> OpenTrackIO;
	TestTrue(TEXT("OpenTrackIO datagram loaded"),
		OrvaneTrackingTests::LoadTestData(
			TEXT("OpenTrackIO/wire/otio_recommended_dynamic_json_seq0.bin"), OpenTrackIO));
	TestTrue(TEXT("OpenTrackIO sent"), OrvaneTrackingTests::SendDatagram(Port, OpenTrackIO));
	const FName OpenTrackIOSubject(TEXT("OpenTrackIO 1"));
	TestTrue(TEXT("OpenTrackIO frame reaches the client"),
		OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
			[Client, &OpenTrackIOSubject]()
			{
				return Client->GetSubjectFrameTimes(OpenTrackIOSubject).Num() == 1;
			}));
	if (TestTrue(TEXT("OpenTrackIO subject evaluates"), EvaluateCamera(*Client, OpenTrackIOSubject, Data)))
	{
		const FLiveLinkCameraFrameData* Frame = Data.FrameData.Cast<FLiveLinkCameraFrameData>();
		const FLiveLinkCameraStaticData* Static = Data.StaticData.Cast<FLiveLinkCameraStaticData>();
		if (TestNotNull(TEXT("Camera frame"), Frame) && TestNotNull(TEXT("Camera static data"), Static))
		{
			TestEqual(TEXT("Focal length in mm"), Frame->FocalLength, 24.305f, 1e-4f);
			TestEqual(TEXT("Aperture"), Frame->Aperture, 4.0f, 1e-6f);
			TestEqual(TEXT("Focus distance in cm"), Frame->FocusDistance, 1000.0f, 1e-3f);
			TestTrue(TEXT("Focal length supported"), Static->bIsFocalLengthSupported);
			TestTrue(TEXT("Aperture supported"), Static->bIsApertureSupported);
			TestTrue(TEXT("Focus supported"), Static->bIsFocusDistanceSupported);
			const FQualifiedFrameTime& SceneTime = Frame->MetaData.SceneTime;
			TestEqual(TEXT("Timecode rate"), SceneTime.Rate, FFrameRate(24, 1));
			TestEqual(TEXT("Timecode"), SceneTime.ToTimecode().ToString(), FString(TEXT("01:02:03:04")));
		}
	}

	TArray<uint8> BadChecksum;
	TestTrue(TEXT("Bad packet loaded"),
		OrvaneTrackingTests::LoadTestData(TEXT("FreeD/freed_d1_bad_checksum.bin"), BadChecksum));
	TestTrue(TEXT("Bad packet sent"), OrvaneTrackingTests::SendDatagram(Port, BadChecksum));
	TestTrue(TEXT("Rejection counted"),
		OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
			[&Added]()
			{
				return Added.Source->GetCounters().Rejected[static_cast<int32>(EOrvaneDatagramRejection::Checksum)] ==
					   1;
			}));
	TestEqual(TEXT("The bad packet never reached the subject"), Client->GetSubjectFrameTimes(FreeDSubject).Num(), 3);
	TestTrue(TEXT("Status names the last error"),
		OrvaneTrackingTests::TickClientUntil(*Client, 1.0,
			[Client, &Added]()
			{
				return Client->GetSourceStatus(Added.Guid).ToString().Contains(TEXT("last error: bad checksum"));
			}));

	TestTrue(TEXT("Source removed"), OrvaneTrackingTests::RemoveAllSources(*Client));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(
	FOrvaneTrackingSourceCyclesTest, "Orvane.Tracking.Source.RemoveCreateCycles", OrvaneTrackingSourceTest::TestFlags)

bool FOrvaneTrackingSourceCyclesTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneTrackingSourceTest;
	ILiveLinkClient* Client = GetClientWithoutSources(*this);
	if (!Client)
	{
		return false;
	}

	const uint16 Port = OrvaneTrackingTests::FindFreeUdpPort();
	FAddedSource Previous = AddSource(*Client, Port);
	TestTrue(TEXT("First source bound"), WaitUntilReceiving(*Client, *Previous.Source));
	int32 BoundInTime = 0;
	for (int32 Cycle = 0; Cycle < 100; ++Cycle)
	{
		// The way a new setup replaces the old source: remove, then add at once, in the same frame.
		Client->RemoveSource(Previous.Guid);
		const FAddedSource Next = AddSource(*Client, Port);
		if (WaitUntilReceiving(*Client, *Next.Source, 1.0))
		{
			++BoundInTime;
		}
		else
		{
			AddError(FString::Printf(TEXT("Cycle %d: the new source did not bind within 1 s (%s)"), Cycle,
				*Client->GetSourceStatus(Next.Guid).ToString()));
		}
		Previous = Next;
	}
	TestEqual(TEXT("Cycles whose source bound within 1 s"), BoundInTime, 100);
	TestTrue(TEXT("Old sources all gone"), OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
											   [Client]()
											   {
												   return Client->GetSources(true).Num() == 1;
											   }));

	TArray<uint8> FreeD;
	OrvaneTrackingTests::LoadTestData(TEXT("FreeD/freed_d1_vector1.bin"), FreeD);
	OrvaneTrackingTests::SendDatagram(Port, FreeD);
	TestTrue(TEXT("The last source receives"), OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
												   [&Previous]()
												   {
													   return Previous.Source->GetCounters().Samples == 1;
												   }));
	TestTrue(TEXT("Source removed"), OrvaneTrackingTests::RemoveAllSources(*Client));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(
	FOrvaneTrackingSourcePortInUseTest, "Orvane.Tracking.Source.PortInUse", OrvaneTrackingSourceTest::TestFlags)

bool FOrvaneTrackingSourcePortInUseTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneTrackingSourceTest;
	ILiveLinkClient* Client = GetClientWithoutSources(*this);
	if (!Client)
	{
		return false;
	}

	const uint16 Port = OrvaneTrackingTests::FindFreeUdpPort();
	FSocket* Squatter = FUdpSocketBuilder(TEXT("OrvaneTrackingTestSquatter"))
							.BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, Port))
							.Build();
	if (!TestNotNull(TEXT("Port taken by another socket"), Squatter))
	{
		return false;
	}

	AddExpectedError(FString::Printf(TEXT("Port %d busy; the tracking source keeps retrying"), Port),
		EAutomationExpectedErrorFlags::Contains, 1);
	const FAddedSource Added = AddSource(*Client, Port);
	const FString BusyStatus = FString::Printf(TEXT("Port %d busy, retrying"), Port);
	TestTrue(TEXT("Status says the port is busy"), OrvaneTrackingTests::TickClientUntil(*Client, 1.0,
													   [Client, &Added, &BusyStatus]()
													   {
														   return Client->GetSourceStatus(Added.Guid).ToString() ==
																  BusyStatus;
													   }));
	TestFalse(TEXT("Not valid while the port is busy"), Client->IsSourceStillValid(Added.Guid));
	// Keep the port busy long enough for the one warning that a persistent conflict deserves.
	OrvaneTrackingTests::TickClientUntil(*Client, FOrvaneTrackingSource::PersistentBindFailureSeconds + 0.5,
		[]()
		{
			return false;
		});

	Squatter->Close();
	ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->DestroySocket(Squatter);
	TestTrue(TEXT("Binds once the port is free"), WaitUntilReceiving(*Client, *Added.Source, 1.0));
	TestTrue(TEXT("Valid once bound"), Client->IsSourceStillValid(Added.Guid));
	TestTrue(TEXT("Source removed"), OrvaneTrackingTests::RemoveAllSources(*Client));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(
	FOrvaneTrackingSourceSettingsTest, "Orvane.Tracking.Source.PresetSettings", OrvaneTrackingSourceTest::TestFlags)

bool FOrvaneTrackingSourceSettingsTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneTrackingSourceTest;
	ILiveLinkClient* Client = GetClientWithoutSources(*this);
	if (!Client)
	{
		return false;
	}

	const uint16 Port = OrvaneTrackingTests::FindFreeUdpPort();
	const FAddedSource Added = AddSource(*Client, Port);
	const ULiveLinkSourceSettings* Settings = Client->GetSourceSettings(Added.Guid);
	if (TestNotNull(TEXT("Settings created"), Settings))
	{
		TestTrue(TEXT("Settings of the tracking class"), Settings->IsA<UOrvaneTrackingSourceSettings>());
		TestEqual(TEXT("Connection string is the endpoint"), Settings->ConnectionString,
			FString::Printf(TEXT("127.0.0.1:%d"), Port));
		TestTrue(TEXT("Factory set"), Settings->Factory.Get() == UOrvaneTrackingSourceFactory::StaticClass());
	}
	TestEqual(TEXT("Source type"), Client->GetSourceType(Added.Guid).ToString(),
		FString(FOrvaneTrackingSource::SourceTypeText));

	const UOrvaneTrackingSourceFactory* Factory = GetDefault<UOrvaneTrackingSourceFactory>();
	const TSharedPtr<ILiveLinkSource> FromString = Factory->CreateSource(TEXT("239.135.1.2:55555"));
	if (TestTrue(TEXT("Factory creates from a connection string"), FromString.IsValid()))
	{
		TestEqual(
			TEXT("Same endpoint"), FromString->GetSourceMachineName().ToString(), FString(TEXT("239.135.1.2:55555")));
	}
	const TSharedPtr<ILiveLinkSource> FromNothing = Factory->CreateSource(FString());
	if (TestTrue(TEXT("An empty connection string listens on the default endpoint"), FromNothing.IsValid()))
	{
		TestEqual(
			TEXT("Default endpoint"), FromNothing->GetSourceMachineName().ToString(), FString(TEXT("0.0.0.0:9001")));
	}
	AddExpectedError(TEXT("Invalid tracking endpoint 'not an endpoint'"), EAutomationExpectedErrorFlags::Contains, 1);
	TestFalse(
		TEXT("A bad connection string creates nothing"), Factory->CreateSource(TEXT("not an endpoint")).IsValid());
	TestTrue(TEXT("Source removed"), OrvaneTrackingTests::RemoveAllSources(*Client));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(
	FOrvaneTrackingSourceMulticastTest, "Orvane.Tracking.Source.Multicast", OrvaneTrackingSourceTest::TestFlags)

bool FOrvaneTrackingSourceMulticastTest::RunTest(const FString& Parameters)
{
	using namespace OrvaneTrackingSourceTest;
	ILiveLinkClient* Client = GetClientWithoutSources(*this);
	if (!Client)
	{
		return false;
	}

	// A multicast endpoint joins the group; datagrams sent to the group (looped back to this host) arrive.
	const uint16 Port = OrvaneTrackingTests::FindFreeUdpPort();
	const FIPv4Endpoint Group(FIPv4Address(239, 135, 1, 77), Port);
	const TSharedPtr<FOrvaneTrackingSource> Source = MakeShared<FOrvaneTrackingSource>(Group.ToString(), Group);
	Client->AddSource(Source);
	TestTrue(TEXT("Joined the group"), WaitUntilReceiving(*Client, *Source));

	TArray<uint8> FreeD;
	TestTrue(
		TEXT("FreeD vector 1 loaded"), OrvaneTrackingTests::LoadTestData(TEXT("FreeD/freed_d1_vector1.bin"), FreeD));
	FSocket* Sender = FUdpSocketBuilder(TEXT("OrvaneTrackingTestMulticastSender")).WithMulticastLoopback().Build();
	if (TestNotNull(TEXT("Sender"), Sender))
	{
		int32 BytesSent = 0;
		TestTrue(TEXT("Sent to the group"),
			Sender->SendTo(FreeD.GetData(), FreeD.Num(), BytesSent, *Group.ToInternetAddr()));
		Sender->Close();
		ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->DestroySocket(Sender);
	}
	TestTrue(TEXT("The group's datagram reaches the subject"),
		OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
			[Client]()
			{
				return Client->GetSubjectFrameTimes(FName(TEXT("FreeD 1"))).Num() == 1;
			}));
	TestTrue(TEXT("Source removed"), OrvaneTrackingTests::RemoveAllSources(*Client));
	return true;
}

#endif

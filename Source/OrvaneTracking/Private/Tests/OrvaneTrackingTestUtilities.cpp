// Copyright Orvane. All Rights Reserved.

#include "Tests/OrvaneTrackingTestUtilities.h"

#if WITH_DEV_AUTOMATION_TESTS

#include "Common/UdpSocketBuilder.h"
#include "Containers/Ticker.h"
#include "Features/IModularFeatures.h"
#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTime.h"
#include "ILiveLinkClient.h"
#include "IPAddress.h"
#include "Interfaces/IPluginManager.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

namespace OrvaneTrackingTests
{
	ILiveLinkClient* GetClient()
	{
		IModularFeatures& Features = IModularFeatures::Get();
		return Features.IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName)
				   ? &Features.GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName)
				   : nullptr;
	}

	uint16 FindFreeUdpPort()
	{
		FSocket* Socket = FUdpSocketBuilder(TEXT("OrvaneTrackingTestPort"))
							  .BoundToEndpoint(FIPv4Endpoint(FIPv4Address::InternalLoopback, 0))
							  .Build();
		if (!Socket)
		{
			return 0;
		}
		const uint16 Port = static_cast<uint16>(Socket->GetPortNo());
		Socket->Close();
		ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->DestroySocket(Socket);
		return Port;
	}

	bool SendDatagram(uint16 Port, TArrayView<const uint8> Datagram)
	{
		FSocket* Socket = FUdpSocketBuilder(TEXT("OrvaneTrackingTestSender")).Build();
		if (!Socket)
		{
			return false;
		}
		const TSharedRef<FInternetAddr> Destination =
			FIPv4Endpoint(FIPv4Address::InternalLoopback, Port).ToInternetAddr();
		int32 BytesSent = 0;
		const bool bSent =
			Socket->SendTo(Datagram.GetData(), Datagram.Num(), BytesSent, *Destination) && BytesSent == Datagram.Num();
		Socket->Close();
		ISocketSubsystem::Get(PLATFORM_SOCKETSUBSYSTEM)->DestroySocket(Socket);
		return bSent;
	}

	bool TickClientUntil(ILiveLinkClient& Client, double TimeoutSeconds, TFunctionRef<bool()> Condition)
	{
		const double Deadline = FPlatformTime::Seconds() + TimeoutSeconds;
		while (true)
		{
			Client.ForceTick();
			if (Condition())
			{
				return true;
			}
			if (FPlatformTime::Seconds() > Deadline)
			{
				return false;
			}
			FPlatformProcess::Sleep(0.001f);
		}
	}

	void WaitForFrames(TFunction<bool()> Condition, double TimeoutSeconds, TFunction<void(bool)> OnDone)
	{
		const double Deadline = FPlatformTime::Seconds() + TimeoutSeconds;
		FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
			[Condition = MoveTemp(Condition), OnDone = MoveTemp(OnDone), Deadline](float)
			{
				if (Condition())
				{
					OnDone(true);
					return false;
				}
				if (FPlatformTime::Seconds() > Deadline)
				{
					OnDone(false);
					return false;
				}
				FPlatformProcess::Sleep(0.001f);
				return true;
			}));
	}

	bool RemoveAllSources(ILiveLinkClient& Client)
	{
		for (const FGuid& SourceGuid : Client.GetSources())
		{
			Client.RemoveSource(SourceGuid);
		}
		return TickClientUntil(Client, 5.0,
			[&Client]()
			{
				return Client.GetSources(true).Num() == 0;
			});
	}

	bool LoadTestData(const FString& RelativePath, TArray<uint8>& OutBytes)
	{
		const TSharedPtr<IPlugin> Plugin = IPluginManager::Get().FindPlugin(TEXT("Orvane"));
		return Plugin.IsValid() &&
			   FFileHelper::LoadFileToArray(
				   OutBytes, *FPaths::Combine(Plugin->GetBaseDir(), TEXT("Resources/TestData/Tracking"), RelativePath));
	}
} // namespace OrvaneTrackingTests

#endif

// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "IPAddress.h"
#include "Interfaces/IPv4/IPv4Address.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "SocketSubsystem.h"

#include <gtest/gtest.h>

inline void PrintTo(const FIPv4Endpoint& Endpoint, std::ostream* Os)
{
	*Os << ToUtf8(Endpoint.ToString());
}

inline void PrintTo(const FIPv4Address& Address, std::ostream* Os)
{
	*Os << ToUtf8(Address.ToString());
}

TEST(IPv4Address, ComponentsAndValueDescribeTheSameAddress)
{
	const FIPv4Address Address(192, 168, 1, 20);
	EXPECT_EQ(Address.A, 192);
	EXPECT_EQ(Address.B, 168);
	EXPECT_EQ(Address.C, 1);
	EXPECT_EQ(Address.D, 20);
	EXPECT_EQ(Address.Value, 0xC0A80114u);
	EXPECT_EQ(Address.ToString(), FString(TEXT("192.168.1.20")));
	EXPECT_EQ(FIPv4Address(0xC0A80114u), Address);
	EXPECT_EQ(FIPv4Address(), FIPv4Address::Any);

	EXPECT_EQ(FIPv4Address::Any.ToString(), FString(TEXT("0.0.0.0")));
	EXPECT_EQ(FIPv4Address::InternalLoopback.ToString(), FString(TEXT("127.0.0.1")));
	EXPECT_EQ(FIPv4Address::LanBroadcast.ToString(), FString(TEXT("255.255.255.255")));

	EXPECT_EQ((FIPv4Address(192, 168, 1, 20) & FIPv4Address(255, 255, 255, 0)), FIPv4Address(192, 168, 1, 0));
	EXPECT_EQ((FIPv4Address(192, 168, 1, 0) | ~FIPv4Address(255, 255, 255, 0)), FIPv4Address(192, 168, 1, 255));
}

TEST(IPv4Address, ParsesFourDecimalOctets)
{
	struct FCase
	{
		const TCHAR* Text;
		uint32 Value;
	};
	for (const FCase& Case : {FCase{TEXT("0.0.0.0"), 0u}, FCase{TEXT("255.255.255.255"), 0xFFFFFFFFu},
			 FCase{TEXT("192.168.1.20"), 0xC0A80114u}, FCase{TEXT("239.135.1.1"), 0xEF870101u},
			 FCase{TEXT("010.001.000.009"), 0x0A010009u}})
	{
		FIPv4Address Parsed;
		ASSERT_TRUE(FIPv4Address::Parse(Case.Text, Parsed)) << ToUtf8(Case.Text);
		EXPECT_EQ(Parsed.Value, Case.Value) << ToUtf8(Case.Text);
	}
}

TEST(IPv4Address, RefusesAnythingElseAndLeavesTheOutputAlone)
{
	for (const TCHAR* Bad : {TEXT(""), TEXT("256.0.0.1"), TEXT("1.2.3.256"), TEXT("1.2.3"), TEXT("1.2.3.4.5"),
			 TEXT("1..3.4"), TEXT(".1.2.3"), TEXT("1.2.3."), TEXT(" 1.2.3.4"), TEXT("1.2.3.4 "), TEXT("1. 2.3.4"),
			 TEXT("a.b.c.d"), TEXT("1.2.3.-4"), TEXT("1.2.3.+4"), TEXT("1234.1.1.1"), TEXT("0001.1.1.1"),
			 TEXT("localhost"), TEXT("1.2.3.4:80"), TEXT("0x7f.0.0.1")})
	{
		FIPv4Address Parsed(9, 9, 9, 9);
		EXPECT_FALSE(FIPv4Address::Parse(Bad, Parsed)) << ToUtf8(Bad);
		EXPECT_EQ(Parsed, FIPv4Address(9, 9, 9, 9)) << ToUtf8(Bad);
	}
}

TEST(IPv4Address, ClassifiesAddressRanges)
{
	EXPECT_TRUE(FIPv4Address(224, 0, 0, 0).IsMulticastAddress());
	EXPECT_TRUE(FIPv4Address(239, 135, 1, 1).IsMulticastAddress());
	EXPECT_TRUE(FIPv4Address(239, 255, 255, 255).IsMulticastAddress());
	EXPECT_FALSE(FIPv4Address(223, 255, 255, 255).IsMulticastAddress());
	EXPECT_FALSE(FIPv4Address(240, 0, 0, 0).IsMulticastAddress());

	EXPECT_TRUE(FIPv4Address(127, 0, 0, 1).IsLoopbackAddress());
	EXPECT_TRUE(FIPv4Address(127, 200, 3, 4).IsLoopbackAddress());
	EXPECT_FALSE(FIPv4Address(128, 0, 0, 1).IsLoopbackAddress());

	EXPECT_TRUE(FIPv4Address(224, 0, 0, 251).IsLinkLocalMulticast());
	EXPECT_FALSE(FIPv4Address(224, 0, 0, 251).IsGlobalMulticast());
	EXPECT_TRUE(FIPv4Address(224, 0, 1, 0).IsGlobalMulticast());
	EXPECT_FALSE(FIPv4Address(239, 1, 1, 1).IsGlobalMulticast());
	EXPECT_TRUE(FIPv4Address(239, 192, 0, 1).IsOrganizationLocalMulticast());
	EXPECT_TRUE(FIPv4Address(239, 255, 0, 1).IsSiteLocalMulticast());
	EXPECT_TRUE(FIPv4Address(230, 0, 0, 1).IsSessionFrontendMulticast());
	EXPECT_FALSE(FIPv4Address(230, 0, 0, 2).IsSessionFrontendMulticast());

	EXPECT_TRUE(FIPv4Address(169, 254, 10, 1).IsLinkLocal());
	EXPECT_TRUE(FIPv4Address(10, 1, 2, 3).IsSiteLocalAddress());
	EXPECT_TRUE(FIPv4Address(172, 16, 0, 1).IsSiteLocalAddress());
	EXPECT_TRUE(FIPv4Address(172, 31, 255, 1).IsSiteLocalAddress());
	EXPECT_FALSE(FIPv4Address(172, 32, 0, 1).IsSiteLocalAddress());
	EXPECT_TRUE(FIPv4Address(192, 168, 0, 1).IsSiteLocalAddress());
	EXPECT_FALSE(FIPv4Address(8, 8, 8, 8).IsSiteLocalAddress());
}

TEST(IPv4Endpoint, ParsesAddressColonPort)
{
	struct FCase
	{
		const TCHAR* Text;
		FIPv4Endpoint Expected;
	};
	for (const FCase& Case : {FCase{TEXT("127.0.0.1:9001"), FIPv4Endpoint(FIPv4Address(127, 0, 0, 1), 9001)},
			 FCase{TEXT("0.0.0.0:9001"), FIPv4Endpoint(FIPv4Address::Any, 9001)},
			 FCase{TEXT("239.135.1.2:55555"), FIPv4Endpoint(FIPv4Address(239, 135, 1, 2), 55555)},
			 FCase{TEXT("255.255.255.255:65535"), FIPv4Endpoint(FIPv4Address::LanBroadcast, 65535)},
			 FCase{TEXT("10.0.0.1:0"), FIPv4Endpoint(FIPv4Address(10, 0, 0, 1), 0)},
			 FCase{TEXT("10.0.0.1:00080"), FIPv4Endpoint(FIPv4Address(10, 0, 0, 1), 80)}})
	{
		FIPv4Endpoint Parsed;
		ASSERT_TRUE(FIPv4Endpoint::Parse(Case.Text, Parsed)) << ToUtf8(Case.Text);
		EXPECT_EQ(Parsed, Case.Expected) << ToUtf8(Case.Text);
	}
}

TEST(IPv4Endpoint, PortZeroIsAValidPortAndRoundTrips)
{
	FIPv4Endpoint Parsed(FIPv4Address(1, 1, 1, 1), 1);
	ASSERT_TRUE(FIPv4Endpoint::Parse(FIPv4Endpoint::Any.ToString(), Parsed));
	EXPECT_EQ(Parsed, FIPv4Endpoint::Any);
	EXPECT_EQ(FIPv4Endpoint::Any.ToString(), FString(TEXT("0.0.0.0:0")));
}

TEST(IPv4Endpoint, RefusesEverythingElseAndLeavesTheOutputAlone)
{
	for (const TCHAR* Bad : {TEXT(""), TEXT("127.0.0.1"), TEXT("127.0.0.1:"), TEXT(":9001"), TEXT("127.0.0.1:65536"),
			 TEXT("127.0.0.1:-1"), TEXT("127.0.0.1:+1"), TEXT("127.0.0.1: 9001"), TEXT("127.0.0.1 :9001"),
			 TEXT(" 127.0.0.1:9001"), TEXT("127.0.0.1:9001 "), TEXT("localhost:9001"), TEXT("my-tracker.local:9001"),
			 TEXT("256.0.0.1:80"), TEXT("1.2.3:80"), TEXT("1.2.3.4:80:90"), TEXT("1.2.3.4:0x50"),
			 TEXT("1.2.3.4:123456"), TEXT("1.2.3.4;80"), TEXT("[::1]:80")})
	{
		FIPv4Endpoint Parsed(FIPv4Address(9, 9, 9, 9), 9);
		EXPECT_FALSE(FIPv4Endpoint::Parse(Bad, Parsed)) << ToUtf8(Bad);
		EXPECT_EQ(Parsed, FIPv4Endpoint(FIPv4Address(9, 9, 9, 9), 9)) << ToUtf8(Bad);
	}
}

TEST(IPv4Endpoint, ConvertsToAndFromInternetAddr)
{
	const FIPv4Endpoint Endpoint(FIPv4Address(192, 168, 7, 9), 40000);
	EXPECT_EQ(Endpoint.ToString(), FString(TEXT("192.168.7.9:40000")));

	TSharedRef<FInternetAddr> Addr = Endpoint.ToInternetAddr();
	EXPECT_TRUE(Addr->IsValid());
	EXPECT_EQ(Addr->ToString(true), FString(TEXT("192.168.7.9:40000")));
	EXPECT_EQ(Endpoint.ToInternetAddrIPV4()->ToString(true), FString(TEXT("192.168.7.9:40000")));

	const FIPv4Endpoint Back{TSharedPtr<FInternetAddr>(Addr)};
	EXPECT_EQ(Back, Endpoint);
	EXPECT_EQ(GetTypeHash(Back), GetTypeHash(Endpoint));
	EXPECT_NE(GetTypeHash(FIPv4Endpoint(FIPv4Address(192, 168, 7, 9), 40001)), GetTypeHash(Endpoint));
}

TEST(IPv4Endpoint, FromHostAndPortResolvesNamesAndTakesLiterals)
{
	FIPv4Endpoint Resolved;
	ASSERT_TRUE(FIPv4Endpoint::FromHostAndPort(TEXT("localhost:9001"), Resolved));
	EXPECT_TRUE(Resolved.Address.IsLoopbackAddress());
	EXPECT_EQ(Resolved.Port, 9001);

	ASSERT_TRUE(FIPv4Endpoint::FromHostAndPort(TEXT("10.1.2.3:55555"), Resolved));
	EXPECT_EQ(Resolved, FIPv4Endpoint(FIPv4Address(10, 1, 2, 3), 55555));

	ASSERT_TRUE(FIPv4Endpoint::FromHostAndPort(TEXT("10.1.2.3"), Resolved));
	EXPECT_EQ(Resolved, FIPv4Endpoint(FIPv4Address(10, 1, 2, 3), 0));

	FIPv4Endpoint Untouched(FIPv4Address(9, 9, 9, 9), 9);
	EXPECT_FALSE(FIPv4Endpoint::FromHostAndPort(TEXT("localhost:70000"), Untouched));
	EXPECT_FALSE(FIPv4Endpoint::FromHostAndPort(TEXT(":9001"), Untouched));
	EXPECT_FALSE(FIPv4Endpoint::FromHostAndPort(TEXT("localhost:"), Untouched));
	EXPECT_EQ(Untouched, FIPv4Endpoint(FIPv4Address(9, 9, 9, 9), 9));
}

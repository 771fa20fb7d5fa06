// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingEndpoint.h"
#include "CoreMinimal.h"
#include "Misc/AutomationTest.h"

#if WITH_DEV_AUTOMATION_TESTS

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneTrackingEndpointTest, "Orvane.Tracking.Endpoint",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneTrackingEndpointTest::RunTest(const FString& Parameters)
{
	struct FValidCase
	{
		const TCHAR* Text;
		FIPv4Address Address;
		uint16 Port;
	};
	const FValidCase ValidCases[] = {
		{TEXT("0.0.0.0:9001"), FIPv4Address(0, 0, 0, 0), 9001},
		{TEXT("127.0.0.1:1"), FIPv4Address(127, 0, 0, 1), 1},
		{TEXT("192.168.10.20:65535"), FIPv4Address(192, 168, 10, 20), 65535},
		{TEXT("239.135.1.2:55555"), FIPv4Address(239, 135, 1, 2), 55555},
		{TEXT("255.255.255.255:40000"), FIPv4Address(255, 255, 255, 255), 40000},
	};
	for (const FValidCase& Case : ValidCases)
	{
		FIPv4Endpoint Endpoint;
		FString Error;
		if (TestTrue(FString::Printf(TEXT("'%s' parses"), Case.Text),
				FOrvaneTrackingEndpoint::Parse(Case.Text, Endpoint, Error)))
		{
			TestTrue(FString::Printf(TEXT("'%s' address"), Case.Text), Endpoint.Address == Case.Address);
			TestEqual(FString::Printf(TEXT("'%s' port"), Case.Text), Endpoint.Port, Case.Port);
			TestTrue(FString::Printf(TEXT("'%s' leaves no error"), Case.Text), Error.IsEmpty());
		}
	}
	FIPv4Endpoint Multicast;
	FString Ignored;
	FOrvaneTrackingEndpoint::Parse(TEXT("239.135.1.2:55555"), Multicast, Ignored);
	TestTrue(TEXT("A multicast address is recognised as one"), Multicast.Address.IsMulticastAddress());

	struct FInvalidCase
	{
		const TCHAR* Text;
		const TCHAR* Problem;
	};
	const TCHAR* AddressProblem = TEXT("the address must be four numbers from 0 to 255 separated by dots");
	const TCHAR* ColonProblem = TEXT("the address and the port must be joined by a colon");
	const TCHAR* PortProblem = TEXT("the port must be a number from 1 to 65535");
	const FInvalidCase InvalidCases[] = {
		{TEXT(""), AddressProblem},
		{TEXT("0.0.0.0"), ColonProblem},
		{TEXT("0.0.0.0:"), PortProblem},
		{TEXT(":9001"), AddressProblem},
		{TEXT("0.0.0.0:0"), PortProblem},
		{TEXT("0.0.0.0:65536"), PortProblem},
		{TEXT("0.0.0.0:99999999999"), PortProblem},
		{TEXT("0.0.0.0:-1"), PortProblem},
		{TEXT("0.0.0.0:90a1"), PortProblem},
		{TEXT("0.0.0.0:9001 "), PortProblem},
		{TEXT(" 0.0.0.0:9001"), AddressProblem},
		{TEXT("256.0.0.1:9001"), AddressProblem},
		{TEXT("1.2.3:9001"), AddressProblem},
		{TEXT("1.2.3.4.5:9001"), ColonProblem},
		{TEXT("1..3.4:9001"), AddressProblem},
		{TEXT("localhost:9001"), AddressProblem},
		{TEXT("0.0.0.0;9001"), ColonProblem},
		{TEXT("::1:9001"), AddressProblem},
	};
	for (const FInvalidCase& Case : InvalidCases)
	{
		FIPv4Endpoint Endpoint;
		FString Error;
		TestFalse(FString::Printf(TEXT("'%s' is refused"), Case.Text),
			FOrvaneTrackingEndpoint::Parse(Case.Text, Endpoint, Error));
		TestEqual(FString::Printf(TEXT("'%s' error"), Case.Text), Error,
			FString::Printf(
				TEXT("Invalid tracking endpoint '%s': %s. Expected an IPv4 address and a port, such as 0.0.0.0:9001."),
				Case.Text, Case.Problem));
		TestFalse(FString::Printf(TEXT("'%s' is not valid"), Case.Text), FOrvaneTrackingEndpoint::IsValid(Case.Text));
	}
	return true;
}

#endif

// Copyright Orvane. All Rights Reserved.

#include "OrvaneTrackingEndpoint.h"

namespace OrvaneTrackingEndpoint
{
	/** Reads a run of 1 to MaxDigits decimal digits starting at Index, without sign or spaces. */
	static bool ReadNumber(const FString& Text, int32& Index, int32 MaxDigits, uint32& OutValue)
	{
		const int32 Start = Index;
		uint32 Value = 0;
		while (Index < Text.Len() && FChar::IsDigit(Text[Index]) && Index - Start < MaxDigits)
		{
			Value = Value * 10 + static_cast<uint32>(Text[Index] - TEXT('0'));
			++Index;
		}
		OutValue = Value;
		return Index > Start && (Index == Text.Len() || !FChar::IsDigit(Text[Index]));
	}

	static FString Describe(const FString& Text, const TCHAR* Problem)
	{
		return FString::Printf(
			TEXT("Invalid tracking endpoint '%s': %s. Expected an IPv4 address and a port, such as %s."), *Text,
			Problem, FOrvaneTrackingEndpoint::DefaultText);
	}
} // namespace OrvaneTrackingEndpoint

const TCHAR* FOrvaneTrackingEndpoint::DefaultText = TEXT("0.0.0.0:9001");

bool FOrvaneTrackingEndpoint::Parse(const FString& Text, FIPv4Endpoint& OutEndpoint, FString& OutError)
{
	using namespace OrvaneTrackingEndpoint;

	int32 Index = 0;
	uint8 Octets[4] = {};
	for (int32 OctetIndex = 0; OctetIndex < 4; ++OctetIndex)
	{
		uint32 Octet = 0;
		if (!ReadNumber(Text, Index, 3, Octet) || Octet > 255)
		{
			OutError = Describe(Text, TEXT("the address must be four numbers from 0 to 255 separated by dots"));
			return false;
		}
		Octets[OctetIndex] = static_cast<uint8>(Octet);
		const TCHAR Expected = OctetIndex < 3 ? TEXT('.') : TEXT(':');
		if (Index >= Text.Len() || Text[Index] != Expected)
		{
			OutError = OctetIndex < 3
						   ? Describe(Text, TEXT("the address must be four numbers from 0 to 255 separated by dots"))
						   : Describe(Text, TEXT("the address and the port must be joined by a colon"));
			return false;
		}
		++Index;
	}

	uint32 Port = 0;
	if (!ReadNumber(Text, Index, 5, Port) || Index != Text.Len() || Port < 1 || Port > 65535)
	{
		OutError = Describe(Text, TEXT("the port must be a number from 1 to 65535"));
		return false;
	}

	OutEndpoint = FIPv4Endpoint(FIPv4Address(Octets[0], Octets[1], Octets[2], Octets[3]), static_cast<uint16>(Port));
	OutError.Reset();
	return true;
}

bool FOrvaneTrackingEndpoint::IsValid(const FString& Text)
{
	FIPv4Endpoint Endpoint;
	FString Error;
	return Parse(Text, Endpoint, Error);
}

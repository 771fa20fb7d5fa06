// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneOpenTrackIO.h"
#include "Decoding/OrvaneOpenTrackIOSampleMapping.h"
#include "Decoding/OrvanePayloadTree.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace UE::OrvaneTracking::OpenTrackIO::Private
{
	namespace
	{
		/**
		 * True if the JSON text never nests objects and arrays deeper than MaxDepth. Checked before parsing
		 * so that neither the parser nor the release of the parsed tree can be driven into deep recursion.
		 */
		bool IsJsonNestingWithin(TArrayView<const uint8> Text, int32 MaxDepth)
		{
			int32 Depth = 0;
			bool bInString = false;
			bool bEscaped = false;
			for (const uint8 Character : Text)
			{
				if (bInString)
				{
					if (bEscaped)
					{
						bEscaped = false;
					}
					else if (Character == '\\')
					{
						bEscaped = true;
					}
					else if (Character == '"')
					{
						bInString = false;
					}
				}
				else if (Character == '"')
				{
					bInString = true;
				}
				else if (Character == '{' || Character == '[')
				{
					if (++Depth > MaxDepth)
					{
						return false;
					}
				}
				else if (Character == '}' || Character == ']')
				{
					--Depth;
				}
			}
			return true;
		}
	} // namespace
} // namespace UE::OrvaneTracking::OpenTrackIO::Private

TOptional<EOrvaneDatagramRejection> FOrvaneOpenTrackIO::DecodeJsonPayload(
	TArrayView<const uint8> Payload, FOrvaneTrackingSample& OutSample)
{
	using namespace UE::OrvaneTracking::OpenTrackIO::Private;

	if (Payload.Num() == 0 || Payload.Num() > MaxPayloadSize || !IsJsonNestingWithin(Payload, MaxNestingDepth))
	{
		return EOrvaneDatagramRejection::MalformedPayload;
	}
	const FUtf8StringView Text(reinterpret_cast<const UTF8CHAR*>(Payload.GetData()), Payload.Num());
	TSharedPtr<FJsonValue> Root;
	if (!FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::CreateFromView(Text), Root) || !Root.IsValid())
	{
		return EOrvaneDatagramRejection::MalformedPayload;
	}
	return MapSample(*Root, OutSample);
}

TOptional<EOrvaneDatagramRejection> FOrvaneOpenTrackIO::DecodeCborPayload(
	TArrayView<const uint8> Payload, FOrvaneTrackingSample& OutSample)
{
	using namespace UE::OrvaneTracking::OpenTrackIO::Private;

	FPayloadTree Tree;
	if (Payload.Num() == 0 || Payload.Num() > MaxPayloadSize || !Tree.ReadCbor(Payload, MaxNestingDepth))
	{
		return EOrvaneDatagramRejection::MalformedPayload;
	}
	return MapSample(Tree, OutSample);
}

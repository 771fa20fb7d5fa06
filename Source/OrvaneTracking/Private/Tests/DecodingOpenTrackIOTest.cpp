// Copyright Orvane. All Rights Reserved.

#include "CborWriter.h"
#include "Decoding/OrvaneDatagramDecoder.h"
#include "Decoding/OrvaneOpenTrackIO.h"
#include "Decoding/OrvaneOpenTrackIOStream.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "HAL/UnrealMemory.h"
#include "Misc/AutomationTest.h"
#include "Serialization/MemoryWriter.h"
#include "Tests/DecodingTestData.h"

#include <limits>

#if WITH_DEV_AUTOMATION_TESTS

namespace UE::OrvaneTracking::Tests::OpenTrackIO
{
	const TCHAR* const ManifestFile = TEXT("OpenTrackIO/wire/manifest.json");
	const TCHAR* const DynamicJsonFile = TEXT("OpenTrackIO/wire/otio_recommended_dynamic_json_seq0.bin");
	const TCHAR* const DynamicCborFile = TEXT("OpenTrackIO/wire/otio_recommended_dynamic_cbor_seq1.bin");
	const TCHAR* const SegmentedFile = TEXT("OpenTrackIO/wire/otio_complete_static_json_segmented_sameseq.bin");
	const TCHAR* const BadChecksumFile = TEXT("OpenTrackIO/wire/otio_bad_checksum.bin");
	const TCHAR* const CompleteStaticExample = TEXT("OpenTrackIO/examples/complete_static_example.json");

	const uint64 SenderA = FOrvaneDatagramDecoder::MakeSenderKey(0x0A000001, 55555);

	/** The manifest's entry for a wire file, or null. */
	TSharedPtr<FJsonObject> FindPacket(const FJsonObject& Manifest, const FString& WireFile)
	{
		const TArray<TSharedPtr<FJsonValue>>* Packets = nullptr;
		if (Manifest.TryGetArrayField(TEXT("packets"), Packets))
		{
			for (const TSharedPtr<FJsonValue>& Packet : *Packets)
			{
				const TSharedPtr<FJsonObject>& Object = Packet->AsObject();
				if (Object.IsValid() && TEXT("OpenTrackIO/") + Object->GetStringField(TEXT("file")) == WireFile)
				{
					return Object;
				}
			}
		}
		return nullptr;
	}

	/** Cuts a wire file into the datagrams its manifest entry lists, by their lengths. */
	bool SplitDatagrams(FAutomationTestBase& Test, const TArray<uint8>& File, const FJsonObject& Packet,
		TArray<TArray<uint8>>& OutDatagrams)
	{
		const TArray<TSharedPtr<FJsonValue>>* Datagrams = nullptr;
		if (!Packet.TryGetArrayField(TEXT("datagrams"), Datagrams))
		{
			Test.AddError(TEXT("The manifest entry lists no datagrams."));
			return false;
		}
		int32 Offset = 0;
		for (const TSharedPtr<FJsonValue>& Datagram : *Datagrams)
		{
			const int32 Length = Datagram->AsObject()->GetIntegerField(TEXT("datagram_length"));
			if (Length <= 0 || Offset + Length > File.Num())
			{
				Test.AddError(TEXT("The manifest lists more bytes than the wire file holds."));
				return false;
			}
			OutDatagrams.Emplace(File.GetData() + Offset, Length);
			Offset += Length;
		}
		return Test.TestEqual(TEXT("The datagrams cover the whole wire file"), Offset, File.Num());
	}

	/** Loads a wire file and splits it per its manifest entry. */
	bool LoadWireDatagrams(FAutomationTestBase& Test, const FString& WireFile, TArray<TArray<uint8>>& OutDatagrams)
	{
		const TSharedPtr<FJsonObject> Manifest = LoadTestJson(Test, ManifestFile);
		TArray<uint8> File;
		if (!Manifest.IsValid() || !LoadTestBytes(Test, WireFile, File))
		{
			return false;
		}
		const TSharedPtr<FJsonObject> Packet = FindPacket(*Manifest, WireFile);
		if (!Packet.IsValid())
		{
			Test.AddError(FString::Printf(TEXT("The manifest does not list %s."), *WireFile));
			return false;
		}
		return SplitDatagrams(Test, File, *Packet, OutDatagrams);
	}

	/** The payload of a datagram (everything after the header). */
	TArray<uint8> PayloadOf(const TArray<uint8>& Datagram)
	{
		return TArray<uint8>(
			Datagram.GetData() + FOrvaneOpenTrackIO::HeaderSize, Datagram.Num() - FOrvaneOpenTrackIO::HeaderSize);
	}

	/** A single-datagram payload. */
	TArray<uint8> MakeDatagram(const TArray<uint8>& Payload, uint16 Sequence,
		EOrvaneOpenTrackIOEncoding Encoding = EOrvaneOpenTrackIOEncoding::Json)
	{
		FOrvaneOpenTrackIOHeader Header;
		Header.Encoding = Encoding;
		Header.SequenceNumber = Sequence;
		TArray<uint8> Datagram;
		FOrvaneOpenTrackIO::WriteDatagram(Header, Payload, Datagram);
		return Datagram;
	}

	/** Writes a fresh checksum into a datagram whose header or payload a test changed on purpose. */
	void RestampChecksum(TArray<uint8>& Datagram)
	{
		const TArrayView<const uint8> View(Datagram);
		const uint16 Checksum = FOrvaneOpenTrackIO::Fletcher16(View.Left(14), View.Mid(FOrvaneOpenTrackIO::HeaderSize));
		Datagram[14] = uint8(Checksum >> 8);
		Datagram[15] = uint8(Checksum);
	}

	FString RejectionName(const TOptional<EOrvaneDatagramRejection>& Rejection)
	{
		return Rejection ? FString(LexToString(*Rejection)) : FString(TEXT("none"));
	}

	/** Decodes one sample from a single datagram, reporting failures on the test. */
	bool DecodeSingle(
		FAutomationTestBase& Test, const FString& What, const TArray<uint8>& Datagram, FOrvaneTrackingSample& OutSample)
	{
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		const FOrvaneDatagramResult Result = Decoder.Decode(SenderA, Datagram, Samples);
		if (!Test.TestEqual(What + TEXT(" is accepted"), RejectionName(Result.Rejection), FString(TEXT("none"))) ||
			!Test.TestEqual(What + TEXT(" gives one sample"), Samples.Num(), 1))
		{
			return false;
		}
		OutSample = Samples[0];
		return true;
	}

	/** Writes a JSON tree as CBOR the way a sender would: whole numbers as integers, others as doubles. */
	void WriteAsCbor(FCborWriter& Writer, const FJsonValue& Value)
	{
		switch (Value.Type)
		{
			case EJson::Object:
			{
				const TSharedPtr<FJsonObject>& Object = Value.AsObject();
				Writer.WriteContainerStart(ECborCode::Map, Object->Values.Num());
				for (const TPair<FString, TSharedPtr<FJsonValue>>& Member : Object->Values)
				{
					Writer.WriteValue(Member.Key);
					WriteAsCbor(Writer, *Member.Value);
				}
				break;
			}
			case EJson::Array:
			{
				const TArray<TSharedPtr<FJsonValue>>& Items = Value.AsArray();
				Writer.WriteContainerStart(ECborCode::Array, Items.Num());
				for (const TSharedPtr<FJsonValue>& Item : Items)
				{
					WriteAsCbor(Writer, *Item);
				}
				break;
			}
			case EJson::String:
				Writer.WriteValue(Value.AsString());
				break;
			case EJson::Boolean:
				Writer.WriteValue(Value.AsBool());
				break;
			case EJson::Number:
			{
				const double Number = Value.AsNumber();
				if (Number == FMath::FloorToDouble(Number) && FMath::Abs(Number) < 9.0e15)
				{
					Writer.WriteValue(int64(Number));
				}
				else
				{
					Writer.WriteValue(Number);
				}
				break;
			}
			default:
				Writer.WriteNull();
				break;
		}
	}
} // namespace UE::OrvaneTracking::Tests::OpenTrackIO

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOWireTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.WireFilesMatchManifest",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOWireTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	const TSharedPtr<FJsonObject> Manifest = LoadTestJson(*this, ManifestFile);
	UTEST_NOT_NULL(TEXT("Manifest"), Manifest.Get());
	const TArray<TSharedPtr<FJsonValue>>* Packets = nullptr;
	UTEST_TRUE(TEXT("Manifest lists packets"), Manifest->TryGetArrayField(TEXT("packets"), Packets));
	UTEST_EQUAL(TEXT("Number of wire files"), Packets->Num(), 4);

	int32 CheckedDatagrams = 0;
	for (const TSharedPtr<FJsonValue>& PacketValue : *Packets)
	{
		const TSharedPtr<FJsonObject>& Packet = PacketValue->AsObject();
		const FString File = Packet->GetStringField(TEXT("file"));
		TArray<uint8> Bytes;
		UTEST_TRUE(File, LoadTestBytes(*this, TEXT("OpenTrackIO/") + File, Bytes));
		TestEqual(File + TEXT(" size"), Bytes.Num(), Packet->GetIntegerField(TEXT("total_bytes")));
		TArray<TArray<uint8>> Datagrams;
		UTEST_TRUE(File + TEXT(" splits"), SplitDatagrams(*this, Bytes, *Packet, Datagrams));

		const TArray<TSharedPtr<FJsonValue>>& Listed = Packet->GetArrayField(TEXT("datagrams"));
		for (int32 Index = 0; Index < Datagrams.Num(); ++Index)
		{
			const TSharedPtr<FJsonObject>& Expected = Listed[Index]->AsObject();
			const TArray<uint8>& Datagram = Datagrams[Index];
			const FString What = FString::Printf(TEXT("%s datagram %d"), *File, Index);
			const TArray<uint8> Payload = PayloadOf(Datagram);
			FOrvaneOpenTrackIOHeader Header;
			const TOptional<EOrvaneDatagramRejection> Rejection = FOrvaneOpenTrackIO::ParseHeader(Datagram, Header);

			FString CorrectChecksum;
			if (Expected->TryGetStringField(TEXT("checksum_correct"), CorrectChecksum))
			{
				// The negative file: its checksum was damaged on purpose.
				TestEqual(What + TEXT(" is rejected by checksum"), RejectionName(Rejection), FString(TEXT("Checksum")));
				const uint16 Computed =
					FOrvaneOpenTrackIO::Fletcher16(TArrayView<const uint8>(Datagram).Left(14), Payload);
				TestEqual(What + TEXT(" correct checksum"), FString::Printf(TEXT("%04X"), Computed), CorrectChecksum);
				++CheckedDatagrams;
				continue;
			}

			UTEST_EQUAL(What + TEXT(" header parses"), RejectionName(Rejection), FString(TEXT("none")));
			TestEqual(What + TEXT(" sequence"), int64(Header.SequenceNumber),
				int64(Expected->GetIntegerField(TEXT("sequence"))));
			TestEqual(What + TEXT(" segment offset"), int64(Header.SegmentOffset),
				int64(Expected->GetIntegerField(TEXT("segment_offset"))));
			TestTrue(
				What + TEXT(" last-segment flag"), Header.bLastSegment == Expected->GetBoolField(TEXT("last_segment")));
			TestEqual(What + TEXT(" payload length"), int64(Header.PayloadLength),
				int64(Expected->GetIntegerField(TEXT("payload_length"))));
			TestEqual(What + TEXT(" checksum"), FString::Printf(TEXT("%04X"), Header.Checksum),
				Expected->GetStringField(TEXT("checksum")));
			const bool bJson = Packet->GetStringField(TEXT("encoding")).StartsWith(TEXT("JSON"));
			TestTrue(What + TEXT(" encoding"),
				Header.Encoding == (bJson ? EOrvaneOpenTrackIOEncoding::Json : EOrvaneOpenTrackIOEncoding::Cbor));
			TestTrue(What + TEXT(" header bytes"), TArray<uint8>(Datagram.GetData(), FOrvaneOpenTrackIO::HeaderSize) ==
													   ParseHex(Expected->GetStringField(TEXT("header_hex"))));

			TArray<uint8> Rewritten;
			FOrvaneOpenTrackIO::WriteDatagram(Header, Payload, Rewritten);
			TestTrue(What + TEXT(" is rebuilt byte for byte from its fields"), Rewritten == Datagram);
			++CheckedDatagrams;
		}
	}
	TestEqual(TEXT("Datagrams checked"), CheckedDatagrams, 5);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIODynamicTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.RecommendedDynamicSample",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIODynamicTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	TArray<TArray<uint8>> Datagrams;
	UTEST_TRUE(TEXT("JSON wire file"), LoadWireDatagrams(*this, DynamicJsonFile, Datagrams));
	FOrvaneTrackingSample Sample;
	UTEST_TRUE(TEXT("Decodes"), DecodeSingle(*this, TEXT("Recommended dynamic sample"), Datagrams[0], Sample));

	TestTrue(TEXT("Protocol"), Sample.Protocol == EOrvaneTrackingProtocol::OpenTrackIO);
	TestEqual(TEXT("Source number"), int64(Sample.SourceNumber), int64(1));
	TestEqual(TEXT("Source id"), Sample.SourceId, TEXT("urn:uuid:ea87f22f-985a-4a98-91ef-6cccfbda3815"));
	TestEqual(TEXT("Sample id"), Sample.SampleId, TEXT("urn:uuid:873c5392-1fad-4e7d-a7ae-83950051bc2c"));

	// Translation (1, 2, 3) m becomes (200, 100, 300) cm; pan 180, tilt 90, roll 45 becomes pitch 90,
	// yaw -180, roll 45; then the 0.123 m entrance pupil moves the camera 12.3 cm along its forward axis,
	// which at pitch 90 points straight up.
	UTEST_TRUE(TEXT("Has a transform"), Sample.bHasTransform);
	const FRotator ExpectedRotator(90.0, -180.0, 45.0);
	TestTrue(TEXT("Forward axis points up"), ExpectedRotator.Vector().Equals(FVector(0.0, 0.0, 1.0), 1.e-12));
	const FVector ExpectedLocation(200.0, 100.0, 300.0 + 12.3);
	TestTrue(FString::Printf(TEXT("Location %s"), *Sample.Transform.GetTranslation().ToString()),
		Sample.Transform.GetTranslation().Equals(ExpectedLocation, 1.e-6));
	TestTrue(TEXT("Orientation"), Sample.Transform.GetRotation().Equals(ExpectedRotator.Quaternion(), 1.e-12));
	TestTrue(TEXT("Scale"), Sample.Transform.GetScale3D().Equals(FVector::OneVector, 0.0));

	TestTrue(TEXT("Focal length"), Sample.FocalLength == TOptional<float>(24.305f));
	TestTrue(TEXT("Aperture"), Sample.Aperture == TOptional<float>(4.0f));
	TestTrue(TEXT("Focus distance in cm"), Sample.FocusDistance == TOptional<float>(1000.0f));
	TestTrue(TEXT("Entrance pupil in cm"), Sample.EntrancePupilOffset == TOptional<float>(12.3f));
	TestTrue(TEXT("Normalized focus"), Sample.NormalizedFocus == TOptional<float>(0.1f));
	TestTrue(TEXT("Normalized iris"), Sample.NormalizedIris == TOptional<float>(0.2f));
	TestTrue(TEXT("Normalized zoom"), Sample.NormalizedZoom == TOptional<float>(0.3f));
	TestFalse(TEXT("No raw encoders"), Sample.RawZoomEncoder.IsSet() || Sample.RawFocusEncoder.IsSet());

	UTEST_TRUE(TEXT("Has a timecode"), Sample.Timecode.IsSet());
	TestEqual(TEXT("Hours"), Sample.Timecode->Hours, 1);
	TestEqual(TEXT("Minutes"), Sample.Timecode->Minutes, 2);
	TestEqual(TEXT("Seconds"), Sample.Timecode->Seconds, 3);
	TestEqual(TEXT("Frames"), Sample.Timecode->Frames, 4);
	TestEqual(TEXT("Timecode rate"), int64(Sample.Timecode->Rate.Numerator), int64(24));
	TestEqual(TEXT("Timecode rate denominator"), int64(Sample.Timecode->Rate.Denominator), int64(1));
	TestFalse(TEXT("Not drop frame"), Sample.Timecode->bDropFrame);
	TestEqual(TEXT("No sub-frame"), int64(Sample.Timecode->Subframe), int64(0));
	TestTrue(
		TEXT("Sample rate"), Sample.SampleRate == TOptional<FOrvaneTrackingRational>(FOrvaneTrackingRational{24, 1}));
	TestFalse(TEXT("No sequence number in the sample"), Sample.SampleSequenceNumber.IsSet());
	TestEqual(TEXT("Tracker status"), Sample.TrackerStatus, TEXT("Optical Good"));
	TestFalse(TEXT("No static block"), Sample.bHasStatic);
	TestFalse(TEXT("No filmback"), Sample.FilmbackWidth.IsSet());
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOJsonCborTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.JsonAndCborAgree",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOJsonCborTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	TArray<TArray<uint8>> JsonDatagrams;
	TArray<TArray<uint8>> CborDatagrams;
	UTEST_TRUE(TEXT("JSON wire file"), LoadWireDatagrams(*this, DynamicJsonFile, JsonDatagrams));
	UTEST_TRUE(TEXT("CBOR wire file"), LoadWireDatagrams(*this, DynamicCborFile, CborDatagrams));

	FOrvaneTrackingSample FromJson;
	FOrvaneTrackingSample FromCbor;
	UTEST_TRUE(TEXT("JSON decodes"), DecodeSingle(*this, TEXT("JSON"), JsonDatagrams[0], FromJson));
	UTEST_TRUE(TEXT("CBOR decodes"), DecodeSingle(*this, TEXT("CBOR"), CborDatagrams[0], FromCbor));
	TestTrue(TEXT("The CBOR sample has a transform"), FromCbor.bHasTransform);
	TestTrue(TEXT("The CBOR sample has a timecode"), FromCbor.Timecode.IsSet());
	TestSamplesEqual(*this, TEXT("CBOR against JSON"), FromCbor, FromJson, 0.0);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOCompleteCborTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.CompleteSampleJsonAndCborAgree",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOCompleteCborTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	// Every field the decoder maps appears in the complete example; written as CBOR it must decode alike.
	for (const TCHAR* File : {CompleteStaticExample, TEXT("OpenTrackIO/examples/recommended_static_example.json"),
			 TEXT("OpenTrackIO/examples/recommended_dynamic_example.json")})
	{
		TArray<uint8> Text;
		UTEST_TRUE(File, LoadTestBytes(*this, File, Text));
		const TSharedPtr<FJsonObject> Tree = LoadTestJson(*this, File);
		UTEST_NOT_NULL(File, Tree.Get());
		TArray<uint8> Cbor;
		FMemoryWriter Archive(Cbor);
		FCborWriter Writer(&Archive, ECborEndianness::StandardCompliant);
		WriteAsCbor(Writer, FJsonValueObject(Tree));

		FOrvaneTrackingSample FromJson;
		FOrvaneTrackingSample FromCbor;
		UTEST_FALSE(FString(File) + TEXT(" as JSON"), FOrvaneOpenTrackIO::DecodeJsonPayload(Text, FromJson).IsSet());
		UTEST_FALSE(FString(File) + TEXT(" as CBOR"), FOrvaneOpenTrackIO::DecodeCborPayload(Cbor, FromCbor).IsSet());
		TestTrue(FString(File) + TEXT(" has a transform"), FromJson.bHasTransform);
		TestSamplesEqual(*this, File, FromCbor, FromJson, 0.0);
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOSegmentedTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.SegmentedStaticSample",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOSegmentedTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;
	using namespace UE::OrvaneTracking::Private;

	TArray<TArray<uint8>> Datagrams;
	UTEST_TRUE(TEXT("Segmented wire file"), LoadWireDatagrams(*this, SegmentedFile, Datagrams));
	UTEST_EQUAL(TEXT("Two segments"), Datagrams.Num(), 2);
	TArray<uint8> Example;
	UTEST_TRUE(TEXT("Example file"), LoadTestBytes(*this, CompleteStaticExample, Example));

	// The reassembled bytes are the example, minus the whitespace the sender left out.
	FOpenTrackIOStream Stream(SenderA);
	TArray<uint8> Reassembled;
	for (int32 Index = 0; Index < Datagrams.Num(); ++Index)
	{
		FOrvaneOpenTrackIOHeader Header;
		UTEST_FALSE(TEXT("Header parses"), FOrvaneOpenTrackIO::ParseHeader(Datagrams[Index], Header).IsSet());
		const FOpenTrackIOSegmentResult Result = Stream.Accept(Header, PayloadOf(Datagrams[Index]));
		if (Index + 1 < Datagrams.Num())
		{
			TestTrue(TEXT("First segment is kept"), Result.Outcome == EOpenTrackIOSegmentOutcome::Pending);
		}
		else
		{
			UTEST_TRUE(TEXT("Last segment completes"), Result.Outcome == EOpenTrackIOSegmentOutcome::Complete);
			Reassembled = TArray<uint8>(Result.Payload.GetData(), Result.Payload.Num());
		}
	}
	const TArray<uint8> Compact = StripJsonWhitespace(Example);
	TestEqual(TEXT("Reassembled length"), Reassembled.Num(), 2929);
	TestTrue(TEXT("Reassembled bytes equal the example without whitespace"), Reassembled == Compact);

	// Through the datagram decoder, the sample equals the one decoded from the example file itself.
	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	const FOrvaneDatagramResult First = Decoder.Decode(SenderA, Datagrams[0], Samples);
	TestTrue(TEXT("First datagram is pending"), First.bSegmentPending && !First.WasRejected());
	TestEqual(TEXT("No sample yet"), Samples.Num(), 0);
	const FOrvaneDatagramResult Second = Decoder.Decode(SenderA, Datagrams[1], Samples);
	TestEqual(TEXT("Second datagram accepted"), RejectionName(Second.Rejection), FString(TEXT("none")));
	UTEST_EQUAL(TEXT("One sample"), Samples.Num(), 1);

	FOrvaneTrackingSample FromFile;
	UTEST_FALSE(TEXT("Example file decodes"), FOrvaneOpenTrackIO::DecodeJsonPayload(Example, FromFile).IsSet());
	TestSamplesEqual(*this, TEXT("Reassembled against file"), Samples[0], FromFile, 0.0);

	const FOrvaneTrackingSample& Sample = Samples[0];
	TestTrue(TEXT("Static block"), Sample.bHasStatic);
	TestTrue(TEXT("Filmback width"), Sample.FilmbackWidth == TOptional<float>(36.0f));
	TestTrue(TEXT("Filmback height"), Sample.FilmbackHeight == TOptional<float>(24.0f));
	TestEqual(TEXT("Camera make"), Sample.CameraMake, TEXT("CameraMaker"));
	TestEqual(TEXT("Camera model"), Sample.CameraModel, TEXT("Model20"));
	TestEqual(TEXT("Camera label"), Sample.CameraLabel, TEXT("A"));
	TestEqual(TEXT("Camera serial"), Sample.CameraSerialNumber, TEXT("1234567890A"));
	TestEqual(TEXT("Lens make"), Sample.LensMake, TEXT("LensMaker"));
	TestEqual(TEXT("Lens model"), Sample.LensModel, TEXT("Model15"));
	TestTrue(TEXT("Capture rate"),
		Sample.CaptureFrameRate == TOptional<FOrvaneTrackingRational>(FOrvaneTrackingRational{24000, 1001}));
	TestTrue(TEXT("Sequence number"), Sample.SampleSequenceNumber == TOptional<uint32>(0));
	TestTrue(TEXT("Timestamp"),
		Sample.SampleTimestamp == TOptional<FOrvaneTrackingTimestamp>(FOrvaneTrackingTimestamp{1718806554, 500000000}));
	UTEST_TRUE(TEXT("Timecode"), Sample.Timecode.IsSet());
	TestTrue(TEXT("Drop frame"), Sample.Timecode->bDropFrame);
	TestEqual(TEXT("Sub-frame"), int64(Sample.Timecode->Subframe), int64(1));
	TestTrue(TEXT("Timecode rate"), Sample.Timecode->Rate == FOrvaneTrackingRational{24000, 1001});
	TestTrue(TEXT("Raw zoom"), Sample.RawZoomEncoder == TOptional<uint32>(3000));
	TestTrue(TEXT("Raw focus"), Sample.RawFocusEncoder == TOptional<uint32>(1000));
	TestTrue(TEXT("Raw iris"), Sample.RawIrisEncoder == TOptional<uint32>(2000));

	// Three transforms, each relative to the one before: Dolly, then Crane Arm, then Camera. The camera is
	// carried out through each parent in turn; its entrance pupil lies 12.3 cm ahead of it, unscaled.
	auto Relative = [](double Scale)
	{
		return FTransform(
			FRotator(90.0, -180.0, 45.0), FVector(200.0, 100.0, 300.0), FVector(Scale * 2.0, Scale, Scale * 3.0));
	};
	const FTransform Dolly = FTransform(FRotator(90.0, -180.0, 45.0), FVector(200.0, 100.0, 300.0));
	const FTransform Arm = Relative(1.0);
	const FTransform Camera = Relative(1.0);
	const FVector Pupil(12.3, 0.0, 0.0);
	const FQuat ExpectedRotation = Dolly.GetRotation() * Arm.GetRotation() * Camera.GetRotation();
	const FVector ExpectedLocation =
		Dolly.TransformPosition(Arm.TransformPosition(Camera.GetTranslation())) + ExpectedRotation.RotateVector(Pupil);
	UTEST_TRUE(TEXT("Has a transform"), Sample.bHasTransform);
	TestTrue(FString::Printf(TEXT("Location %s against %s"), *Sample.Transform.GetTranslation().ToString(),
				 *ExpectedLocation.ToString()),
		Sample.Transform.GetTranslation().Equals(ExpectedLocation, 1.e-6));
	TestTrue(TEXT("Orientation"), Sample.Transform.GetRotation().Equals(ExpectedRotation, 1.e-9));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOBadChecksumTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.RejectsBadChecksum",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOBadChecksumTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	TArray<TArray<uint8>> Datagrams;
	UTEST_TRUE(TEXT("Bad checksum wire file"), LoadWireDatagrams(*this, BadChecksumFile, Datagrams));
	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	const FOrvaneDatagramResult Result = Decoder.Decode(SenderA, Datagrams[0], Samples);
	TestEqual(TEXT("Rejected by checksum"), RejectionName(Result.Rejection), FString(TEXT("Checksum")));
	TestEqual(TEXT("No sample"), Samples.Num(), 0);
	TestEqual(TEXT("Counted"), Decoder.GetCounters().GetRejections(EOrvaneDatagramRejection::Checksum), uint64(1));

	// Swapping the two checksum bytes (an old variant of the protocol) is not accepted either.
	TArray<TArray<uint8>> Good;
	UTEST_TRUE(TEXT("JSON wire file"), LoadWireDatagrams(*this, DynamicJsonFile, Good));
	TArray<uint8> Swapped = Good[0];
	Swapped.Swap(14, 15);
	const FOrvaneDatagramResult SwappedResult = Decoder.Decode(SenderA, Swapped, Samples);
	TestEqual(TEXT("Swapped checksum rejected"), RejectionName(SwappedResult.Rejection), FString(TEXT("Checksum")));

	// A flipped payload byte is caught too.
	TArray<uint8> Corrupted = Good[0];
	Corrupted[100] ^= 0x10;
	const FOrvaneDatagramResult CorruptedResult = Decoder.Decode(SenderA, Corrupted, Samples);
	TestEqual(TEXT("Corrupted payload rejected"), RejectionName(CorruptedResult.Rejection), FString(TEXT("Checksum")));
	TestEqual(TEXT("Still no sample"), Samples.Num(), 0);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOHeaderTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.HeaderEdgeCases",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOHeaderTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	TArray<TArray<uint8>> Datagrams;
	UTEST_TRUE(TEXT("JSON wire file"), LoadWireDatagrams(*this, DynamicJsonFile, Datagrams));
	const TArray<uint8>& Good = Datagrams[0];

	auto Expect = [this](const FString& What, const TArray<uint8>& Datagram, const TCHAR* Expected)
	{
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		const FOrvaneDatagramResult Result = Decoder.Decode(SenderA, Datagram, Samples);
		TestEqual(What, RejectionName(Result.Rejection), FString(Expected));
		TestEqual(What + TEXT(": samples"), Samples.Num(), Result.WasRejected() ? 0 : 1);
	};

	Expect(TEXT("The unchanged datagram"), Good, TEXT("none"));

	TArray<uint8> Shorter = Good;
	Shorter.Pop();
	Expect(TEXT("One byte missing"), Shorter, TEXT("Length"));
	TArray<uint8> Longer = Good;
	Longer.Add(uint8(' '));
	Expect(TEXT("One byte extra"), Longer, TEXT("Length"));
	Expect(TEXT("Header cut short"), TArray<uint8>(Good.GetData(), 15), TEXT("Length"));
	Expect(TEXT("Magic only"), TArray<uint8>(Good.GetData(), 4), TEXT("Length"));
	Expect(TEXT("Empty"), TArray<uint8>(), TEXT("Length"));
	Expect(TEXT("A lone O"), TArray<uint8>(Good.GetData(), 1), TEXT("BadHeader"));

	TArray<uint8> Oversized;
	Oversized.SetNumZeroed(FOrvaneOpenTrackIO::MaxDatagramSize + 1);
	FMemory::Memcpy(Oversized.GetData(), Good.GetData(), Good.Num());
	Expect(TEXT("65508 bytes"), Oversized, TEXT("Length"));

	TArray<uint8> LengthField = Good;
	LengthField[13] = uint8(LengthField[13] - 1);
	RestampChecksum(LengthField);
	Expect(TEXT("Length field one short, checksum right"), LengthField, TEXT("Length"));

	TArray<uint8> EmptyPayload(Good.GetData(), FOrvaneOpenTrackIO::HeaderSize);
	EmptyPayload[12] = 0x80;
	EmptyPayload[13] = 0x00;
	RestampChecksum(EmptyPayload);
	Expect(TEXT("Empty payload"), EmptyPayload, TEXT("Length"));

	TArray<uint8> WrongMagic = Good;
	WrongMagic[3] = uint8('x');
	Expect(TEXT("Magic OTrx"), WrongMagic, TEXT("BadHeader"));
	TArray<uint8> LowerMagic = Good;
	LowerMagic[0] = uint8('o');
	Expect(TEXT("Magic oTrk"), LowerMagic, TEXT("BadHeader"));

	for (const uint8 Encoding : {uint8(0x00), uint8(0x03), uint8(0x80), uint8(0xFF)})
	{
		TArray<uint8> Unknown = Good;
		Unknown[5] = Encoding;
		RestampChecksum(Unknown);
		Expect(FString::Printf(TEXT("Encoding 0x%02X"), Encoding), Unknown, TEXT("UnknownType"));
	}

	TArray<uint8> CborFlagged = Good;
	CborFlagged[5] = uint8(EOrvaneOpenTrackIOEncoding::Cbor);
	RestampChecksum(CborFlagged);
	Expect(TEXT("JSON bytes flagged as CBOR"), CborFlagged, TEXT("MalformedPayload"));

	TArray<uint8> Reserved = Good;
	Reserved[4] = 0x5A;
	RestampChecksum(Reserved);
	Expect(TEXT("Reserved byte set (ignored)"), Reserved, TEXT("none"));

	// Offset zero without the last flag is the first segment of a longer payload: kept, not decoded.
	TArray<uint8> FirstSegment = Good;
	FirstSegment[12] &= 0x7F;
	RestampChecksum(FirstSegment);
	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	const FOrvaneDatagramResult Pending = Decoder.Decode(SenderA, FirstSegment, Samples);
	TestTrue(TEXT("A first segment is kept"), Pending.bSegmentPending && !Pending.WasRejected());
	TestEqual(TEXT("A first segment gives no sample"), Samples.Num(), 0);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOVersionTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.ProtocolVersions",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOVersionTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	TArray<TArray<uint8>> JsonDatagrams;
	TArray<TArray<uint8>> CborDatagrams;
	UTEST_TRUE(TEXT("JSON wire file"), LoadWireDatagrams(*this, DynamicJsonFile, JsonDatagrams));
	UTEST_TRUE(TEXT("CBOR wire file"), LoadWireDatagrams(*this, DynamicCborFile, CborDatagrams));
	const TArray<uint8> JsonPayload = PayloadOf(JsonDatagrams[0]);
	const FString JsonText(JsonPayload.Num(), reinterpret_cast<const UTF8CHAR*>(JsonPayload.GetData()));
	UTEST_TRUE(TEXT("The sample names its protocol"),
		JsonText.Contains(TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[1,0,1]}")));

	auto ExpectJson = [this, &JsonText](const FString& What, const TCHAR* Protocol, const TCHAR* Expected)
	{
		const FString Changed =
			JsonText.Replace(TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[1,0,1]}"), Protocol);
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		const FOrvaneDatagramResult Result = Decoder.Decode(SenderA, MakeDatagram(ToUtf8Bytes(Changed), 7), Samples);
		TestEqual(What, RejectionName(Result.Rejection), FString(Expected));
	};
	ExpectJson(TEXT("Version 2.0.0"), TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[2,0,0]}"),
		TEXT("UnsupportedVersion"));
	ExpectJson(TEXT("Version 0.9.0"), TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[0,9,0]}"),
		TEXT("UnsupportedVersion"));
	ExpectJson(TEXT("Another protocol"), TEXT("\"protocol\":{\"name\":\"OtherTrack\",\"version\":[1,0,1]}"),
		TEXT("UnsupportedVersion"));
	ExpectJson(
		TEXT("Version 1.9.9"), TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[1,9,9]}"), TEXT("none"));
	ExpectJson(
		TEXT("Version 1.0.0"), TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[1,0,0]}"), TEXT("none"));
	ExpectJson(TEXT("No protocol block"), TEXT("\"unrelated\":{}"), TEXT("none"));
	ExpectJson(TEXT("Version with two numbers"), TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":[1,0]}"),
		TEXT("MalformedPayload"));
	ExpectJson(TEXT("Version as text"), TEXT("\"protocol\":{\"name\":\"OpenTrackIO\",\"version\":\"1.0.1\"}"),
		TEXT("MalformedPayload"));
	ExpectJson(TEXT("Protocol without a name"), TEXT("\"protocol\":{\"version\":[1,0,1]}"), TEXT("MalformedPayload"));

	// The CBOR sample: find the version array [1, 0, 1] after its key and raise the major version.
	TArray<uint8> CborPayload = PayloadOf(CborDatagrams[0]);
	const TArray<uint8> VersionKey = {0x67, 'v', 'e', 'r', 's', 'i', 'o', 'n', 0x83, 0x01, 0x00, 0x01};
	int32 Found = INDEX_NONE;
	for (int32 Index = 0; Index + VersionKey.Num() <= CborPayload.Num() && Found == INDEX_NONE; ++Index)
	{
		if (FMemory::Memcmp(CborPayload.GetData() + Index, VersionKey.GetData(), VersionKey.Num()) == 0)
		{
			Found = Index;
		}
	}
	UTEST_NOT_EQUAL(TEXT("The CBOR sample holds its version"), Found, int32(INDEX_NONE));
	CborPayload[Found + 9] = 0x02;
	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	const FOrvaneDatagramResult Result =
		Decoder.Decode(SenderA, MakeDatagram(CborPayload, 9, EOrvaneOpenTrackIOEncoding::Cbor), Samples);
	TestEqual(TEXT("CBOR version 2.0.1"), RejectionName(Result.Rejection), FString(TEXT("UnsupportedVersion")));
	TestEqual(TEXT("No sample"), Samples.Num(), 0);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOMalformedJsonTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.MalformedJsonPayloads",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOMalformedJsonTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;

	auto Decode = [](const FString& Json, FOrvaneTrackingSample& OutSample)
	{
		return FOrvaneOpenTrackIO::DecodeJsonPayload(ToUtf8Bytes(Json), OutSample);
	};
	auto ExpectMalformed = [this, &Decode](const FString& Json)
	{
		FOrvaneTrackingSample Sample;
		Sample.SourceNumber = 777;
		TestEqual(Json, OpenTrackIO::RejectionName(Decode(Json, Sample)), FString(TEXT("MalformedPayload")));
		TestEqual(Json + TEXT(" leaves the sample alone"), int64(Sample.SourceNumber), int64(777));
	};

	ExpectMalformed(TEXT("not json"));
	ExpectMalformed(TEXT("[1,2,3]"));
	ExpectMalformed(TEXT("\"text\""));
	ExpectMalformed(TEXT("{\"sourceNumber\":1"));
	ExpectMalformed(TEXT("{\"sourceNumber\":1} trailing"));
	ExpectMalformed(TEXT("{\"sourceNumber\":\"1\"}"));
	ExpectMalformed(TEXT("{\"sourceNumber\":1.5}"));
	ExpectMalformed(TEXT("{\"sourceNumber\":-1}"));
	ExpectMalformed(TEXT("{\"sourceNumber\":4294967296}"));
	ExpectMalformed(TEXT("{\"sourceNumber\":true}"));
	ExpectMalformed(TEXT("{\"lens\":{\"pinholeFocalLength\":-24}}"));
	ExpectMalformed(TEXT("{\"lens\":{\"pinholeFocalLength\":1e39}}"));
	ExpectMalformed(TEXT("{\"lens\":{\"fStop\":0}}"));
	ExpectMalformed(TEXT("{\"lens\":{\"focusDistance\":-1}}"));
	ExpectMalformed(TEXT("{\"lens\":{\"encoders\":{\"zoom\":1.5}}}"));
	ExpectMalformed(TEXT("{\"lens\":{\"rawEncoders\":{\"zoom\":-3}}}"));
	ExpectMalformed(TEXT("{\"lens\":[]}"));
	ExpectMalformed(TEXT("{\"timing\":{\"timecode\":{\"hours\":24,\"minutes\":0,\"seconds\":0,\"frames\":0,"
						 "\"frameRate\":{\"num\":24,\"denom\":1}}}}"));
	ExpectMalformed(TEXT("{\"timing\":{\"timecode\":{\"hours\":1,\"minutes\":2,\"seconds\":3,\"frames\":4}}}"));
	ExpectMalformed(TEXT("{\"timing\":{\"timecode\":{\"hours\":1,\"minutes\":2,\"seconds\":3,\"frames\":4,"
						 "\"frameRate\":{\"num\":0,\"denom\":1}}}}"));
	ExpectMalformed(TEXT("{\"timing\":{\"sampleRate\":{\"num\":24}}}"));
	ExpectMalformed(TEXT("{\"timing\":{\"sequenceNumber\":-5}}"));
	ExpectMalformed(TEXT("{\"timing\":{\"sampleTimestamp\":{\"seconds\":1}}}"));
	ExpectMalformed(TEXT("{\"transforms\":[]}"));
	ExpectMalformed(TEXT("{\"transforms\":[1]}"));
	ExpectMalformed(TEXT("{\"transforms\":[{\"rotation\":{}}]}"));
	ExpectMalformed(TEXT("{\"transforms\":[{\"translation\":{}}]}"));
	ExpectMalformed(TEXT("{\"transforms\":[{\"translation\":{\"x\":\"1\"},\"rotation\":{}}]}"));
	// Finite on the wire, but not once metres become centimetres.
	ExpectMalformed(TEXT("{\"transforms\":[{\"translation\":{\"x\":1e307},\"rotation\":{}}]}"));
	ExpectMalformed(TEXT("{\"static\":{\"camera\":{\"activeSensorPhysicalDimensions\":{\"width\":-36}}}}"));

	FString Deep;
	for (int32 Level = 0; Level < 40; ++Level)
	{
		Deep += TEXT("{\"a\":");
	}
	Deep += TEXT("1");
	for (int32 Level = 0; Level < 40; ++Level)
	{
		Deep += TEXT("}");
	}
	ExpectMalformed(Deep);

	// What is well-formed is accepted, with only what it carries.
	FOrvaneTrackingSample Empty;
	TestFalse(TEXT("An empty object is a sample"), Decode(TEXT("{}"), Empty).IsSet());
	TestTrue(TEXT("It is an OpenTrackIO sample"), Empty.Protocol == EOrvaneTrackingProtocol::OpenTrackIO);
	TestFalse(TEXT("It has no transform"), Empty.bHasTransform);
	TestFalse(TEXT("It has no focal length"), Empty.FocalLength.IsSet());

	FOrvaneTrackingSample Braces;
	const FString Status = TEXT("{{{{{{{{{{[[[[[[[[[[{{{{{{{{{{[[[[[[[[[[\\\"{{{{");
	TestFalse(TEXT("Brackets inside strings do not count as nesting"),
		Decode(FString::Printf(TEXT("{\"tracker\":{\"status\":\"%s\"}}"), *Status), Braces).IsSet());
	TestEqual(TEXT("Status text"), Braces.TrackerStatus, TEXT("{{{{{{{{{{[[[[[[[[[[{{{{{{{{{{[[[[[[[[[[\"{{{{"));

	FOrvaneTrackingSample Nulls;
	TestFalse(TEXT("Null fields count as absent"),
		Decode(TEXT("{\"lens\":{\"fStop\":null},\"sourceNumber\":null}"), Nulls).IsSet());
	TestFalse(TEXT("No aperture"), Nulls.Aperture.IsSet());

	FOrvaneTrackingSample Partial;
	TestFalse(TEXT("A transform without some axes"),
		Decode(TEXT("{\"transforms\":[{\"translation\":{\"z\":2},\"rotation\":{\"pan\":90},"
					"\"scale\":{\"y\":2}}]}"),
			Partial)
			.IsSet());
	TestTrue(TEXT("Missing axes are zero"), Partial.Transform.GetTranslation().Equals(FVector(0.0, 0.0, 200.0), 1.e-9));
	TestTrue(TEXT("Pan 90 is yaw -90"),
		Partial.Transform.GetRotation().Equals(FRotator(0.0, -90.0, 0.0).Quaternion(), 1.e-12));
	TestTrue(TEXT("Scale y becomes engine x; missing scale axes are one"),
		Partial.Transform.GetScale3D().Equals(FVector(2.0, 1.0, 1.0), 0.0));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingOpenTrackIOMalformedCborTest,
	"Orvane.Tracking.Decoding.OpenTrackIO.MalformedCborPayloads",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingOpenTrackIOMalformedCborTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::OpenTrackIO;

	TArray<TArray<uint8>> Datagrams;
	UTEST_TRUE(TEXT("CBOR wire file"), LoadWireDatagrams(*this, DynamicCborFile, Datagrams));
	const TArray<uint8> Good = PayloadOf(Datagrams[0]);

	auto Expect = [this](const FString& What, const TArray<uint8>& Payload, const TCHAR* Expected)
	{
		FOrvaneTrackingSample Sample;
		TestEqual(What, RejectionName(FOrvaneOpenTrackIO::DecodeCborPayload(Payload, Sample)), FString(Expected));
	};
	auto Write = [](auto&& Body)
	{
		TArray<uint8> Bytes;
		FMemoryWriter Archive(Bytes);
		FCborWriter Writer(&Archive, ECborEndianness::StandardCompliant);
		Body(Writer);
		return Bytes;
	};

	Expect(TEXT("The sample as sent"), Good, TEXT("none"));
	Expect(TEXT("Cut in half"), TArray<uint8>(Good.GetData(), Good.Num() / 2), TEXT("MalformedPayload"));
	Expect(TEXT("Last byte missing"), TArray<uint8>(Good.GetData(), Good.Num() - 1), TEXT("MalformedPayload"));
	TArray<uint8> Trailing = Good;
	Trailing.Add(0x00);
	Expect(TEXT("A byte after the map"), Trailing, TEXT("MalformedPayload"));
	Expect(TEXT("Empty"), TArray<uint8>(), TEXT("MalformedPayload"));
	Expect(TEXT("Reserved header 0x1C"), TArray<uint8>({0xA1, 0x61, 'a', 0x1C}), TEXT("MalformedPayload"));
	Expect(TEXT("Stray break"), TArray<uint8>({0xFF}), TEXT("MalformedPayload"));
	Expect(TEXT("Map of 2^63 pairs"), TArray<uint8>({0xBB, 0x7F, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}),
		TEXT("MalformedPayload"));
	Expect(TEXT("Text of 2^32 bytes"), TArray<uint8>({0xA1, 0x7A, 0xFF, 0xFF, 0xFF, 0xFF}), TEXT("MalformedPayload"));

	Expect(TEXT("An array at the top"),
		Write(
			[](FCborWriter& Writer)
			{
				Writer.WriteContainerStart(ECborCode::Array, 1);
				Writer.WriteValue(uint64(1));
			}),
		TEXT("MalformedPayload"));
	Expect(TEXT("Focal length NaN"),
		Write(
			[](FCborWriter& Writer)
			{
				Writer.WriteContainerStart(ECborCode::Map, 1);
				Writer.WriteValue(FString(TEXT("lens")));
				Writer.WriteContainerStart(ECborCode::Map, 1);
				Writer.WriteValue(FString(TEXT("pinholeFocalLength")));
				Writer.WriteValue(std::numeric_limits<double>::quiet_NaN());
			}),
		TEXT("MalformedPayload"));
	Expect(TEXT("Translation infinite"),
		Write(
			[](FCborWriter& Writer)
			{
				Writer.WriteContainerStart(ECborCode::Map, 1);
				Writer.WriteValue(FString(TEXT("transforms")));
				Writer.WriteContainerStart(ECborCode::Array, 1);
				Writer.WriteContainerStart(ECborCode::Map, 2);
				Writer.WriteValue(FString(TEXT("translation")));
				Writer.WriteContainerStart(ECborCode::Map, 1);
				Writer.WriteValue(FString(TEXT("x")));
				Writer.WriteValue(std::numeric_limits<double>::infinity());
				Writer.WriteValue(FString(TEXT("rotation")));
				Writer.WriteContainerStart(ECborCode::Map, 0);
			}),
		TEXT("MalformedPayload"));
	Expect(TEXT("Negative source number"),
		Write(
			[](FCborWriter& Writer)
			{
				Writer.WriteContainerStart(ECborCode::Map, 1);
				Writer.WriteValue(FString(TEXT("sourceNumber")));
				Writer.WriteValue(int64(-1));
			}),
		TEXT("MalformedPayload"));
	Expect(TEXT("Forty nested arrays"),
		Write(
			[](FCborWriter& Writer)
			{
				Writer.WriteContainerStart(ECborCode::Map, 1);
				Writer.WriteValue(FString(TEXT("custom")));
				for (int32 Level = 0; Level < 40; ++Level)
				{
					Writer.WriteContainerStart(ECborCode::Array, 1);
				}
				Writer.WriteValue(uint64(1));
			}),
		TEXT("MalformedPayload"));

	// Well-formed CBOR beyond what JSON has: integer keys and byte strings are passed over, tags read through.
	const TArray<uint8> Prefix = Write(
		[](FCborWriter& Writer)
		{
			Writer.WriteContainerStart(ECborCode::Map, 4);
			Writer.WriteValue(uint64(5));
			Writer.WriteValue(FString(TEXT("integer key")));
			Writer.WriteValue(FString(TEXT("custom")));
			const uint8 Bytes[] = {1, 2, 3};
			Writer.WriteValue(Bytes, 3);
			Writer.WriteValue(FString(TEXT("sourceNumber")));
			Writer.WriteValue(uint64(12));
			Writer.WriteValue(FString(TEXT("sourceId")));
		});
	// The writer has no indefinite strings, so the last value, a tagged text in two chunks, is spelled out.
	TArray<uint8> Unusual = Prefix;
	Unusual.Append({0xC0, 0x7F, 0x69, 'u', 'r', 'n', ':', 'u', 'u', 'i', 'd', ':', 0x63, 'a', 'b', 'c', 0xFF});
	FOrvaneTrackingSample Sample;
	TestEqual(TEXT("Unusual but well-formed CBOR"),
		RejectionName(FOrvaneOpenTrackIO::DecodeCborPayload(Unusual, Sample)), FString(TEXT("none")));
	TestEqual(TEXT("Source number"), int64(Sample.SourceNumber), int64(12));
	TestEqual(TEXT("Indefinite text joined"), Sample.SourceId, TEXT("urn:uuid:abc"));
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS

// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneDatagramDecoder.h"
#include "Decoding/OrvaneOpenTrackIO.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "Misc/AutomationTest.h"
#include "Tests/DecodingTestData.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace UE::OrvaneTracking::Tests::Reassembly
{
	const TCHAR* const SegmentedFile = TEXT("OpenTrackIO/wire/otio_complete_static_json_segmented_sameseq.bin");
	const TCHAR* const DynamicJsonFile = TEXT("OpenTrackIO/wire/otio_recommended_dynamic_json_seq0.bin");
	const TCHAR* const CompleteStaticExample = TEXT("OpenTrackIO/examples/complete_static_example.json");

	const uint64 SenderA = FOrvaneDatagramDecoder::MakeSenderKey(0xC0A80010, 55555);
	const uint64 SenderB = FOrvaneDatagramDecoder::MakeSenderKey(0xC0A80011, 55555);

	/** The compact complete static sample (2929 bytes) and the compact dynamic sample (831 bytes). */
	struct FPayloads
	{
		TArray<uint8> Static;
		TArray<uint8> Dynamic;
	};

	bool LoadPayloads(FAutomationTestBase& Test, FPayloads& OutPayloads)
	{
		TArray<uint8> Example;
		TArray<uint8> DynamicDatagram;
		if (!LoadTestBytes(Test, CompleteStaticExample, Example) ||
			!LoadTestBytes(Test, DynamicJsonFile, DynamicDatagram))
		{
			return false;
		}
		OutPayloads.Static = StripJsonWhitespace(Example);
		OutPayloads.Dynamic = TArray<uint8>(DynamicDatagram.GetData() + FOrvaneOpenTrackIO::HeaderSize,
			DynamicDatagram.Num() - FOrvaneOpenTrackIO::HeaderSize);
		return Test.TestEqual(TEXT("Static payload size"), OutPayloads.Static.Num(), 2929) &&
			   Test.TestEqual(TEXT("Dynamic payload size"), OutPayloads.Dynamic.Num(), 831);
	}

	/** A datagram carrying Payload[Offset, Offset + Length). */
	TArray<uint8> MakeSegment(const TArray<uint8>& Payload, int32 Offset, int32 Length, uint16 Sequence,
		EOrvaneOpenTrackIOEncoding Encoding = EOrvaneOpenTrackIOEncoding::Json)
	{
		FOrvaneOpenTrackIOHeader Header;
		Header.Encoding = Encoding;
		Header.SequenceNumber = Sequence;
		Header.SegmentOffset = uint32(Offset);
		Header.bLastSegment = Offset + Length == Payload.Num();
		TArray<uint8> Datagram;
		FOrvaneOpenTrackIO::WriteDatagram(Header, TArrayView<const uint8>(Payload).Slice(Offset, Length), Datagram);
		return Datagram;
	}

	/**
	 * Payload cut into segments at the given boundaries. Sequence numbers are all FirstSequence when
	 * bConsecutive is false, else FirstSequence, FirstSequence + 1, ...
	 */
	TArray<TArray<uint8>> MakeSegments(
		const TArray<uint8>& Payload, const TArray<int32>& Boundaries, uint16 FirstSequence, bool bConsecutive)
	{
		TArray<TArray<uint8>> Segments;
		int32 Start = 0;
		for (int32 Index = 0; Index <= Boundaries.Num(); ++Index)
		{
			const int32 End = Index < Boundaries.Num() ? Boundaries[Index] : Payload.Num();
			const uint16 Sequence = uint16(FirstSequence + (bConsecutive ? Index : 0));
			Segments.Add(MakeSegment(Payload, Start, End - Start, Sequence));
			Start = End;
		}
		return Segments;
	}

	/** Feeds datagrams in the given order; returns the results. */
	TArray<FOrvaneDatagramResult> Feed(FOrvaneDatagramDecoder& Decoder, uint64 Sender,
		const TArray<TArray<uint8>>& Datagrams, const TArray<int32>& Order, TArray<FOrvaneTrackingSample>& OutSamples)
	{
		TArray<FOrvaneDatagramResult> Results;
		for (const int32 Index : Order)
		{
			Results.Add(Decoder.Decode(Sender, Datagrams[Index], OutSamples));
		}
		return Results;
	}

	FString Describe(const FOrvaneDatagramResult& Result)
	{
		if (Result.Rejection)
		{
			return LexToString(*Result.Rejection);
		}
		if (Result.bSegmentPending)
		{
			return TEXT("pending");
		}
		return FString::Printf(TEXT("%d sample(s)"), Result.NumSamples);
	}

	uint64 Bookkeeping(const FOrvaneDatagramDecoder& Decoder)
	{
		return Decoder.GetCounters().GetRejections(EOrvaneDatagramRejection::SegmentBookkeeping);
	}
} // namespace UE::OrvaneTracking::Tests::Reassembly

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingReassemblyConventionsTest,
	"Orvane.Tracking.Decoding.Reassembly.BothSequenceConventions",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingReassemblyConventionsTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::Reassembly;

	FPayloads Payloads;
	UTEST_TRUE(TEXT("Payloads"), LoadPayloads(*this, Payloads));
	FOrvaneTrackingSample Expected;
	UTEST_FALSE(TEXT("Reference decode"), FOrvaneOpenTrackIO::DecodeJsonPayload(Payloads.Static, Expected).IsSet());

	// The recorded file repeats the sequence number on both segments; re-headered, it numbers each segment.
	TArray<uint8> File;
	UTEST_TRUE(TEXT("Segmented file"), LoadTestBytes(*this, SegmentedFile, File));
	UTEST_EQUAL(TEXT("File size"), File.Num(), 1500 + 1461);
	TArray<TArray<uint8>> Renumbered = {
		TArray<uint8>(File.GetData(), 1500), TArray<uint8>(File.GetData() + 1500, 1461)};
	for (int32 Index = 0; Index < Renumbered.Num(); ++Index)
	{
		FOrvaneOpenTrackIOHeader Header;
		UTEST_FALSE(TEXT("Recorded header parses"), FOrvaneOpenTrackIO::ParseHeader(Renumbered[Index], Header).IsSet());
		TestEqual(TEXT("Recorded sequence"), int64(Header.SequenceNumber), int64(2));
		Header.SequenceNumber = uint16(40 + Index);
		const TArray<uint8> Payload(Renumbered[Index].GetData() + FOrvaneOpenTrackIO::HeaderSize, Header.PayloadLength);
		FOrvaneOpenTrackIO::WriteDatagram(Header, Payload, Renumbered[Index]);
	}

	struct FCase
	{
		const TCHAR* Name;
		TArray<TArray<uint8>> Datagrams;
	};
	const TArray<FCase> Cases = {
		{TEXT("Recorded file, same number on each segment"),
			{TArray<uint8>(File.GetData(), 1500), TArray<uint8>(File.GetData() + 1500, 1461)}},
		{TEXT("Recorded file re-headered with consecutive numbers"), Renumbered},
		{TEXT("Three segments, same number"), MakeSegments(Payloads.Static, {1000, 2000}, 500, false)},
		{TEXT("Three segments, consecutive numbers"), MakeSegments(Payloads.Static, {1000, 2000}, 500, true)},
		{TEXT("Consecutive numbers across the wrap"), MakeSegments(Payloads.Static, {700, 1400, 2100}, 65534, true)},
	};
	for (const FCase& Case : Cases)
	{
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		for (int32 Index = 0; Index < Case.Datagrams.Num(); ++Index)
		{
			const FOrvaneDatagramResult Result = Decoder.Decode(SenderA, Case.Datagrams[Index], Samples);
			const bool bLast = Index + 1 == Case.Datagrams.Num();
			TestEqual(FString::Printf(TEXT("%s: datagram %d"), Case.Name, Index), Describe(Result),
				FString(bLast ? TEXT("1 sample(s)") : TEXT("pending")));
		}
		if (TestEqual(FString::Printf(TEXT("%s: samples"), Case.Name), Samples.Num(), 1))
		{
			TestSamplesEqual(*this, Case.Name, Samples[0], Expected, 0.0);
		}
		TestEqual(FString::Printf(TEXT("%s: no gaps"), Case.Name), Decoder.GetSequenceGapCount(), uint64(0));
		TestEqual(FString::Printf(TEXT("%s: no rejections"), Case.Name), Decoder.GetCounters().GetTotalRejections(),
			uint64(0));
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingReassemblyReorderedTest,
	"Orvane.Tracking.Decoding.Reassembly.ReorderedSegments",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingReassemblyReorderedTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::Reassembly;

	FPayloads Payloads;
	UTEST_TRUE(TEXT("Payloads"), LoadPayloads(*this, Payloads));
	FOrvaneTrackingSample Expected;
	UTEST_FALSE(TEXT("Reference decode"), FOrvaneOpenTrackIO::DecodeJsonPayload(Payloads.Static, Expected).IsSet());

	for (const bool bConsecutive : {false, true})
	{
		const TArray<TArray<uint8>> Segments = MakeSegments(Payloads.Static, {1000, 2000}, 300, bConsecutive);
		for (const TArray<int32>& Order : TArray<TArray<int32>>{{2, 0, 1}, {1, 2, 0}, {0, 2, 1}, {2, 1, 0}})
		{
			const FString Name = FString::Printf(TEXT("%s numbering, order %d %d %d"),
				bConsecutive ? TEXT("Consecutive") : TEXT("Repeated"), Order[0], Order[1], Order[2]);
			FOrvaneDatagramDecoder Decoder;
			TArray<FOrvaneTrackingSample> Samples;
			const TArray<FOrvaneDatagramResult> Results = Feed(Decoder, SenderA, Segments, Order, Samples);
			TestEqual(Name + TEXT(": first"), Describe(Results[0]), FString(TEXT("pending")));
			TestEqual(Name + TEXT(": second"), Describe(Results[1]), FString(TEXT("pending")));
			TestEqual(Name + TEXT(": third"), Describe(Results[2]), FString(TEXT("1 sample(s)")));
			if (TestEqual(Name + TEXT(": samples"), Samples.Num(), 1))
			{
				TestSamplesEqual(*this, Name, Samples[0], Expected, 0.0);
			}
			TestEqual(Name + TEXT(": nothing abandoned"), Bookkeeping(Decoder), uint64(0));
		}
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingReassemblyMissingTest,
	"Orvane.Tracking.Decoding.Reassembly.MissingMiddleSegment",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingReassemblyMissingTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::Reassembly;

	FPayloads Payloads;
	UTEST_TRUE(TEXT("Payloads"), LoadPayloads(*this, Payloads));

	for (const bool bConsecutive : {false, true})
	{
		const FString Name = bConsecutive ? TEXT("Consecutive numbering") : TEXT("Repeated numbering");
		const TArray<TArray<uint8>> Segments = MakeSegments(Payloads.Static, {1000, 2000}, 10, bConsecutive);
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		TestEqual(Name + TEXT(": first segment"), Describe(Decoder.Decode(SenderA, Segments[0], Samples)),
			FString(TEXT("pending")));
		const FOrvaneDatagramResult Last = Decoder.Decode(SenderA, Segments[2], Samples);
		TestEqual(Name + TEXT(": last segment, middle missing"), Describe(Last), FString(TEXT("pending")));
		TestEqual(Name + TEXT(": a skipped number is a gap"), Last.SequenceGap, bConsecutive ? uint32(1) : uint32(0));
		TestEqual(Name + TEXT(": nothing given up yet"), Bookkeeping(Decoder), uint64(0));

		// The next payload starts: the one with the hole is given up, once, and the new one is used.
		const uint16 NextSequence = bConsecutive ? 13 : 11;
		const FOrvaneDatagramResult Next =
			Decoder.Decode(SenderA, MakeSegment(Payloads.Dynamic, 0, 831, NextSequence), Samples);
		TestEqual(Name + TEXT(": next payload"), Describe(Next), FString(TEXT("1 sample(s)")));
		TestEqual(Name + TEXT(": abandoned with it"), Next.NumAbandonedPayloads, 1);
		TestEqual(Name + TEXT(": counted once"), Bookkeeping(Decoder), uint64(1));
		TestEqual(Name + TEXT(": only the new sample"), Samples.Num(), 1);

		// The late middle segment completes nothing now.
		const FOrvaneDatagramResult Late = Decoder.Decode(SenderA, Segments[1], Samples);
		TestTrue(Name + TEXT(": late middle segment dropped"), Late.WasRejected());
		TestEqual(Name + TEXT(": still one sample"), Samples.Num(), 1);
		TestEqual(Name + TEXT(": still counted once"), Bookkeeping(Decoder), uint64(1));
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingReassemblyDuplicateTest,
	"Orvane.Tracking.Decoding.Reassembly.DuplicateDatagrams",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingReassemblyDuplicateTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::Reassembly;

	FPayloads Payloads;
	UTEST_TRUE(TEXT("Payloads"), LoadPayloads(*this, Payloads));
	const TArray<TArray<uint8>> Segments = MakeSegments(Payloads.Static, {1484}, 2, false);
	const TArray<uint8> Single = MakeSegment(Payloads.Dynamic, 0, 831, 3);

	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	const TArray<FOrvaneDatagramResult> Results = Feed(Decoder, SenderA,
		{Segments[0], Segments[0], Segments[1], Segments[1], Single, Single}, {0, 1, 2, 3, 4, 5}, Samples);
	TestEqual(TEXT("First segment"), Describe(Results[0]), FString(TEXT("pending")));
	TestEqual(TEXT("First segment again"), Describe(Results[1]), FString(TEXT("Duplicate")));
	TestEqual(TEXT("Last segment"), Describe(Results[2]), FString(TEXT("1 sample(s)")));
	TestEqual(TEXT("Last segment again"), Describe(Results[3]), FString(TEXT("Duplicate")));
	TestEqual(TEXT("Single datagram"), Describe(Results[4]), FString(TEXT("1 sample(s)")));
	TestEqual(TEXT("Single datagram again"), Describe(Results[5]), FString(TEXT("Duplicate")));
	TestEqual(TEXT("Each payload used once"), Samples.Num(), 2);
	TestEqual(TEXT("Duplicates counted"), Decoder.GetDuplicateCount(), uint64(3));
	TestEqual(TEXT("Duplicates are not gaps"), Decoder.GetSequenceGapCount(), uint64(0));
	TestEqual(TEXT("Nothing abandoned"), Bookkeeping(Decoder), uint64(0));

	// The same datagram from another sender is that sender's own.
	const FOrvaneDatagramResult Other = Decoder.Decode(SenderB, Single, Samples);
	TestEqual(TEXT("Another sender"), Describe(Other), FString(TEXT("1 sample(s)")));
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingReassemblyBookkeepingTest,
	"Orvane.Tracking.Decoding.Reassembly.BookkeepingErrors",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingReassemblyBookkeepingTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::Reassembly;

	FPayloads Payloads;
	UTEST_TRUE(TEXT("Payloads"), LoadPayloads(*this, Payloads));
	const TArray<uint8>& Static = Payloads.Static;
	FOrvaneTrackingSample Expected;
	UTEST_FALSE(TEXT("Reference decode"), FOrvaneOpenTrackIO::DecodeJsonPayload(Static, Expected).IsSet());

	{
		// A segment overlapping one already held: the payload cannot be trusted and is given up.
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		Decoder.Decode(SenderA, MakeSegment(Static, 0, 1000, 20), Samples);
		const FOrvaneDatagramResult Overlap = Decoder.Decode(SenderA, MakeSegment(Static, 500, 1000, 20), Samples);
		TestEqual(TEXT("Overlap abandons the payload"), Overlap.NumAbandonedPayloads, 1);
		Decoder.Decode(SenderA, MakeSegment(Static, 1500, Static.Num() - 1500, 20), Samples);
		TestEqual(TEXT("Overlap: no sample"), Samples.Num(), 0);
		TestEqual(TEXT("Overlap: counted"), Bookkeeping(Decoder), uint64(1));
	}
	{
		// The first segment says JSON, the second CBOR.
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		Decoder.Decode(SenderA, MakeSegment(Static, 0, 1484, 30), Samples);
		const FOrvaneDatagramResult Mixed = Decoder.Decode(
			SenderA, MakeSegment(Static, 1484, Static.Num() - 1484, 30, EOrvaneOpenTrackIOEncoding::Cbor), Samples);
		TestEqual(TEXT("Mixed encodings abandon the payload"), Mixed.NumAbandonedPayloads, 1);
		TestEqual(TEXT("Mixed encodings: no sample"), Samples.Num(), 0);
		TestEqual(TEXT("Mixed encodings: counted"), Bookkeeping(Decoder), uint64(1));
	}
	{
		// A new first segment before the last one of the payload in progress.
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		Decoder.Decode(SenderA, MakeSegment(Static, 0, 1484, 40), Samples);
		const FOrvaneDatagramResult Restart = Decoder.Decode(SenderA, MakeSegment(Static, 0, 1484, 41), Samples);
		TestEqual(TEXT("A new payload abandons the old one"), Restart.NumAbandonedPayloads, 1);
		TestTrue(TEXT("and is kept itself"), Restart.bSegmentPending);
		const FOrvaneDatagramResult End =
			Decoder.Decode(SenderA, MakeSegment(Static, 1484, Static.Num() - 1484, 41), Samples);
		TestEqual(TEXT("The new payload completes"), Describe(End), FString(TEXT("1 sample(s)")));
		TestEqual(TEXT("Restart: counted once"), Bookkeeping(Decoder), uint64(1));
	}
	{
		// Segments of two senders interleave without disturbing each other.
		const TArray<TArray<uint8>> Segments = MakeSegments(Static, {1484}, 50, true);
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		Decoder.Decode(SenderA, Segments[0], Samples);
		Decoder.Decode(SenderB, Segments[0], Samples);
		Decoder.Decode(SenderB, Segments[1], Samples);
		Decoder.Decode(SenderA, Segments[1], Samples);
		UTEST_EQUAL(TEXT("Two senders: two samples"), Samples.Num(), 2);
		TestSamplesEqual(*this, TEXT("Sender A"), Samples[0], Expected, 0.0);
		TestSamplesEqual(*this, TEXT("Sender B"), Samples[1], Expected, 0.0);
		TestEqual(TEXT("Two senders: nothing abandoned"), Bookkeeping(Decoder), uint64(0));
	}
	{
		// Past the reassembly cap.
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		TArray<uint8> Filler;
		Filler.SetNumZeroed(1000);
		FOrvaneOpenTrackIOHeader Header;
		Header.SequenceNumber = 60;
		Header.SegmentOffset = uint32(FOrvaneOpenTrackIO::MaxPayloadSize - 500);
		Header.bLastSegment = true;
		TArray<uint8> Datagram;
		FOrvaneOpenTrackIO::WriteDatagram(Header, Filler, Datagram);
		TestEqual(
			TEXT("Beyond the cap"), Describe(Decoder.Decode(SenderA, Datagram, Samples)), FString(TEXT("Oversize")));
		Header.SegmentOffset = 0xFFFFFF00u;
		FOrvaneOpenTrackIO::WriteDatagram(Header, Filler, Datagram);
		TestEqual(
			TEXT("Offset near 4 GiB"), Describe(Decoder.Decode(SenderA, Datagram, Samples)), FString(TEXT("Oversize")));
		Header.SegmentOffset = uint32(FOrvaneOpenTrackIO::MaxPayloadSize - 1000);
		Header.SequenceNumber = 61;
		FOrvaneOpenTrackIO::WriteDatagram(Header, Filler, Datagram);
		TestEqual(TEXT("Right up to the cap is kept"), Describe(Decoder.Decode(SenderA, Datagram, Samples)),
			FString(TEXT("pending")));
	}
	{
		// More senders than are tracked: the one heard from least recently is forgotten with its payload.
		FOrvaneDatagramDecoder Decoder;
		TArray<FOrvaneTrackingSample> Samples;
		const TArray<uint8> First = MakeSegment(Static, 0, 1484, 70);
		for (int32 Sender = 0; Sender <= FOrvaneDatagramDecoder::MaxSenders; ++Sender)
		{
			Decoder.Decode(FOrvaneDatagramDecoder::MakeSenderKey(0x0A000000 + Sender, 55555), First, Samples);
		}
		TestEqual(TEXT("One payload forgotten"), Bookkeeping(Decoder), uint64(1));
		const FOrvaneDatagramResult Late = Decoder.Decode(FOrvaneDatagramDecoder::MakeSenderKey(0x0A000000, 55555),
			MakeSegment(Static, 1484, Static.Num() - 1484, 70), Samples);
		TestEqual(TEXT("The forgotten sender starts afresh"), Describe(Late), FString(TEXT("pending")));
		const FOrvaneDatagramResult Kept = Decoder.Decode(FOrvaneDatagramDecoder::MakeSenderKey(0x0A000000 + 5, 55555),
			MakeSegment(Static, 1484, Static.Num() - 1484, 70), Samples);
		TestEqual(TEXT("A remembered sender completes"), Describe(Kept), FString(TEXT("1 sample(s)")));
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingReassemblyGapsTest, "Orvane.Tracking.Decoding.Reassembly.SequenceGaps",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingReassemblyGapsTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::Reassembly;

	FPayloads Payloads;
	UTEST_TRUE(TEXT("Payloads"), LoadPayloads(*this, Payloads));
	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	auto Send = [&Decoder, &Samples, &Payloads](uint16 Sequence)
	{
		return Decoder.Decode(SenderA, MakeSegment(Payloads.Dynamic, 0, Payloads.Dynamic.Num(), Sequence), Samples);
	};

	// Across the wrap with nothing missing.
	for (const uint16 Sequence : {uint16(65533), uint16(65534), uint16(65535), uint16(0), uint16(1)})
	{
		const FOrvaneDatagramResult Result = Send(Sequence);
		TestEqual(FString::Printf(TEXT("Sequence %u"), Sequence), Describe(Result), FString(TEXT("1 sample(s)")));
		TestEqual(FString::Printf(TEXT("Sequence %u gap"), Sequence), Result.SequenceGap, uint32(0));
	}
	TestEqual(TEXT("No gaps across the wrap"), Decoder.GetSequenceGapCount(), uint64(0));

	// 65535 straight to 2 skips 0 and 1.
	FOrvaneDatagramDecoder WrapDecoder;
	TArray<FOrvaneTrackingSample> WrapSamples;
	WrapDecoder.Decode(SenderA, MakeSegment(Payloads.Dynamic, 0, 831, 65535), WrapSamples);
	const FOrvaneDatagramResult AfterWrap =
		WrapDecoder.Decode(SenderA, MakeSegment(Payloads.Dynamic, 0, 831, 2), WrapSamples);
	TestEqual(TEXT("65535 to 2"), AfterWrap.SequenceGap, uint32(2));
	TestEqual(TEXT("Two lost across the wrap"), WrapDecoder.GetSequenceGapCount(), uint64(2));
	TestEqual(TEXT("Both samples used"), WrapSamples.Num(), 2);

	// Ahead again, then one that is older than what was already used.
	TestEqual(TEXT("1 to 5"), Send(5).SequenceGap, uint32(3));
	TestEqual(TEXT("Gaps so far"), Decoder.GetSequenceGapCount(), uint64(3));
	const FOrvaneDatagramResult Late = Send(3);
	TestEqual(TEXT("A late single datagram"), Describe(Late), FString(TEXT("OutOfOrder")));
	TestEqual(TEXT("Late is not a gap"), Decoder.GetSequenceGapCount(), uint64(3));

	// Far behind means the sender started counting again: accepted, no gap.
	const FOrvaneDatagramResult Restarted = Send(40000);
	TestEqual(TEXT("Restarted sender"), Describe(Restarted), FString(TEXT("1 sample(s)")));
	TestEqual(TEXT("Restart is not a gap"), Restarted.SequenceGap, uint32(0));
	TestEqual(TEXT("Next after restart"), Send(40001).SequenceGap, uint32(0));
	TestEqual(TEXT("Gaps in total"), Decoder.GetSequenceGapCount(), uint64(3));
	TestEqual(TEXT("Samples in total"), Samples.Num(), 8);
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS

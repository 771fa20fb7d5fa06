// Copyright Orvane. All Rights Reserved.

#include "Decoding/OrvaneDatagramDecoder.h"
#include "Decoding/OrvaneFreeD.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Misc/AutomationTest.h"
#include "Tests/DecodingTestData.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace UE::OrvaneTracking::Tests::FreeD
{
	const TCHAR* const VectorsFile = TEXT("FreeD/freed_d1_vectors.json");

	/** The raw integer and the value a "decoded" field of the vectors file gives. */
	struct FExpectedField
	{
		int64 Raw = 0;
		double Value = 0.0;
	};

	FExpectedField ReadField(const FJsonObject& Decoded, const TCHAR* Name)
	{
		FExpectedField Field;
		const TSharedPtr<FJsonObject>* Object = nullptr;
		if (Decoded.TryGetObjectField(Name, Object))
		{
			(*Object)->TryGetNumberField(TEXT("raw"), Field.Raw);
			(*Object)->TryGetNumberField(TEXT("value"), Field.Value);
		}
		return Field;
	}

	/** The negative vector of the vectors file with the given name, as bytes. */
	TArray<uint8> FindNegativeVector(const FJsonObject& Vectors, const TCHAR* Name)
	{
		const TArray<TSharedPtr<FJsonValue>>* Negatives = nullptr;
		if (Vectors.TryGetArrayField(TEXT("negative_vectors"), Negatives))
		{
			for (const TSharedPtr<FJsonValue>& Entry : *Negatives)
			{
				const TSharedPtr<FJsonObject>& Object = Entry->AsObject();
				if (Object.IsValid() && Object->GetStringField(TEXT("name")) == Name)
				{
					return ParseHex(Object->GetStringField(TEXT("hex")));
				}
			}
		}
		return {};
	}

	/** Vector 1 with its type byte replaced and its checksum made right again. */
	TArray<uint8> WithType(TArray<uint8> Message, uint8 Type)
	{
		Message[0] = Type;
		Message[FOrvaneFreeD::MessageSize - 1] =
			FOrvaneFreeD::ComputeChecksum(TArrayView<const uint8>(Message).Left(FOrvaneFreeD::MessageSize - 1));
		return Message;
	}
} // namespace UE::OrvaneTracking::Tests::FreeD

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingFreeDVectorsTest, "Orvane.Tracking.Decoding.FreeD.Vectors",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingFreeDVectorsTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::FreeD;

	const TSharedPtr<FJsonObject> Vectors = LoadTestJson(*this, VectorsFile);
	UTEST_NOT_NULL(TEXT("Vectors file"), Vectors.Get());
	const TArray<TSharedPtr<FJsonValue>>* Entries = nullptr;
	UTEST_TRUE(TEXT("The file lists vectors"), Vectors->TryGetArrayField(TEXT("vectors"), Entries));
	UTEST_EQUAL(TEXT("Number of vectors"), Entries->Num(), 2);

	for (const TSharedPtr<FJsonValue>& Entry : *Entries)
	{
		const TSharedPtr<FJsonObject>& Vector = Entry->AsObject();
		const FString Name = Vector->GetStringField(TEXT("name"));
		const TSharedPtr<FJsonObject>& Decoded = Vector->GetObjectField(TEXT("decoded"));
		const TSharedPtr<FJsonObject>& Expected = Vector->GetObjectField(TEXT("ue_expected"));

		TArray<uint8> Datagram;
		UTEST_TRUE(Name + TEXT(" file"),
			LoadTestBytes(*this, TEXT("FreeD/") + Vector->GetStringField(TEXT("file")), Datagram));
		UTEST_TRUE(Name + TEXT(": the file holds the listed bytes"),
			Datagram == ParseHex(Vector->GetStringField(TEXT("hex"))));

		FOrvaneFreeDMessage Message;
		const TOptional<EOrvaneDatagramRejection> Rejection = FOrvaneFreeD::Parse(Datagram, Message);
		UTEST_FALSE(Name + TEXT(" parses"), Rejection.IsSet());

		TestEqual(
			Name + TEXT(" camera id"), int64(Message.CameraId), int64(Decoded->GetIntegerField(TEXT("camera_id"))));
		const FExpectedField Pan = ReadField(*Decoded, TEXT("pan_deg"));
		const FExpectedField Tilt = ReadField(*Decoded, TEXT("tilt_deg"));
		const FExpectedField Roll = ReadField(*Decoded, TEXT("roll_deg"));
		const FExpectedField X = ReadField(*Decoded, TEXT("x_mm"));
		const FExpectedField Y = ReadField(*Decoded, TEXT("y_mm"));
		const FExpectedField Z = ReadField(*Decoded, TEXT("z_mm"));
		TestEqual(Name + TEXT(" raw pan"), int64(Message.RawPan), Pan.Raw);
		TestEqual(Name + TEXT(" raw tilt"), int64(Message.RawTilt), Tilt.Raw);
		TestEqual(Name + TEXT(" raw roll"), int64(Message.RawRoll), Roll.Raw);
		TestEqual(Name + TEXT(" raw X"), int64(Message.RawX), X.Raw);
		TestEqual(Name + TEXT(" raw Y"), int64(Message.RawY), Y.Raw);
		TestEqual(Name + TEXT(" raw Z"), int64(Message.RawZ), Z.Raw);
		// These values are exact in binary, so the decoder must reproduce them exactly.
		TestEqual(Name + TEXT(" pan"), Message.GetPanDegrees(), Pan.Value, 0.0);
		TestEqual(Name + TEXT(" tilt"), Message.GetTiltDegrees(), Tilt.Value, 0.0);
		TestEqual(Name + TEXT(" roll"), Message.GetRollDegrees(), Roll.Value, 0.0);
		TestEqual(Name + TEXT(" X"), Message.GetXMillimetres(), X.Value, 0.0);
		TestEqual(Name + TEXT(" Y"), Message.GetYMillimetres(), Y.Value, 0.0);
		TestEqual(Name + TEXT(" Z"), Message.GetZMillimetres(), Z.Value, 0.0);
		TestEqual(Name + TEXT(" zoom"), int64(Message.Zoom), ReadField(*Decoded, TEXT("zoom_raw")).Raw);
		TestEqual(Name + TEXT(" focus"), int64(Message.Focus), ReadField(*Decoded, TEXT("focus_raw")).Raw);
		TestEqual(Name + TEXT(" spare"), int64(Message.Spare), ReadField(*Decoded, TEXT("spare_raw")).Raw);

		// The engine's own decoder is one step off for negative values; ours must not be.
		const TSharedPtr<FJsonObject>& Builtin = Vector->GetObjectField(TEXT("ue_5x_builtin_decoder_result"));
		if (Tilt.Raw < 0)
		{
			TestNotEqual(Name + TEXT(" tilt differs from the off-by-one result"), Message.GetTiltDegrees(),
				Builtin->GetNumberField(TEXT("tilt")));
		}
		if (Y.Raw < 0)
		{
			TestNotEqual(Name + TEXT(" Y differs from the off-by-one result"), Message.GetYMillimetres(),
				Builtin->GetNumberField(TEXT("y_mm")));
		}

		FOrvaneTrackingSample Sample;
		UTEST_FALSE(Name + TEXT(" decodes"), FOrvaneFreeD::Decode(Datagram, Sample).IsSet());
		TestTrue(Name + TEXT(" protocol"), Sample.Protocol == EOrvaneTrackingProtocol::FreeD);
		TestTrue(Name + TEXT(" has a transform"), Sample.bHasTransform);
		TestEqual(Name + TEXT(" source number"), int64(Sample.SourceNumber), int64(Message.CameraId));
		TestTrue(Name + TEXT(" zoom encoder"), Sample.RawZoomEncoder == TOptional<uint32>(Message.Zoom));
		TestTrue(Name + TEXT(" focus encoder"), Sample.RawFocusEncoder == TOptional<uint32>(Message.Focus));
		TestTrue(Name + TEXT(" user data"), Sample.UserData == TOptional<uint16>(Message.Spare));
		TestFalse(Name + TEXT(" has no focal length"), Sample.FocalLength.IsSet());

		const TSharedPtr<FJsonObject>& Location = Expected->GetObjectField(TEXT("Location_cm"));
		const TSharedPtr<FJsonObject>& Rotator = Expected->GetObjectField(TEXT("Rotator_deg"));
		const FVector Translation = Sample.Transform.GetTranslation();
		// One division by ten separates the exact millimetres from the centimetres.
		TestEqual(Name + TEXT(" location X"), Translation.X, Location->GetNumberField(TEXT("X")), 1.e-12);
		TestEqual(Name + TEXT(" location Y"), Translation.Y, Location->GetNumberField(TEXT("Y")), 1.e-12);
		TestEqual(Name + TEXT(" location Z"), Translation.Z, Location->GetNumberField(TEXT("Z")), 1.e-12);

		// Pitch 90 is gimbal lock, where several rotators name one orientation, so orientations are
		// compared as quaternions. The tolerance is far below what a 1/32768-degree step changes.
		const FRotator ExpectedRotator(Rotator->GetNumberField(TEXT("Pitch")), Rotator->GetNumberField(TEXT("Yaw")),
			Rotator->GetNumberField(TEXT("Roll")));
		TestTrue(
			Name + TEXT(" orientation"), Sample.Transform.GetRotation().Equals(ExpectedRotator.Quaternion(), 1.e-12));
		const FRotator OneStepOff(ExpectedRotator.Pitch, ExpectedRotator.Yaw, ExpectedRotator.Roll + 1.0 / 32768.0);
		TestFalse(Name + TEXT(" orientation is not one roll step off"),
			Sample.Transform.GetRotation().Equals(OneStepOff.Quaternion(), 1.e-12));
		TestTrue(Name + TEXT(" unit scale"), Sample.Transform.GetScale3D().Equals(FVector::OneVector, 0.0));
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingFreeDVector1RotatorTest,
	"Orvane.Tracking.Decoding.FreeD.RotatorAwayFromGimbalLock",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingFreeDVector1RotatorTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;

	TArray<uint8> Datagram;
	UTEST_TRUE(TEXT("Vector 1"), LoadTestBytes(*this, TEXT("FreeD/freed_d1_vector1.bin"), Datagram));
	FOrvaneTrackingSample Sample;
	UTEST_FALSE(TEXT("Decodes"), FOrvaneFreeD::Decode(Datagram, Sample).IsSet());
	// Away from gimbal lock the rotator comes back unambiguously: tilt is pitch, pan is yaw.
	const FRotator Rotator = Sample.Transform.Rotator();
	TestEqual(TEXT("Pitch"), Rotator.Pitch, -12.5, 1.e-9);
	TestEqual(TEXT("Yaw"), Rotator.Yaw, 90.0, 1.e-9);
	TestEqual(TEXT("Roll"), Rotator.Roll, 0.5, 1.e-9);
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingFreeDRejectsTest, "Orvane.Tracking.Decoding.FreeD.RejectsBadDatagrams",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingFreeDRejectsTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::FreeD;

	const TSharedPtr<FJsonObject> Vectors = LoadTestJson(*this, VectorsFile);
	UTEST_NOT_NULL(TEXT("Vectors file"), Vectors.Get());
	TArray<uint8> Vector1;
	UTEST_TRUE(TEXT("Vector 1"), LoadTestBytes(*this, TEXT("FreeD/freed_d1_vector1.bin"), Vector1));

	auto ExpectRejection = [this](const FString& What, const TArray<uint8>& Datagram, EOrvaneDatagramRejection Expected)
	{
		FOrvaneTrackingSample Sample;
		Sample.SourceNumber = 4242;
		const TOptional<EOrvaneDatagramRejection> Rejection = FOrvaneFreeD::Decode(Datagram, Sample);
		if (TestTrue(What + TEXT(" is rejected"), Rejection.IsSet()))
		{
			TestEqual(
				What + TEXT(" rejection reason"), FString(LexToString(*Rejection)), FString(LexToString(Expected)));
		}
		TestEqual(What + TEXT(" leaves the sample alone"), int64(Sample.SourceNumber), int64(4242));
	};

	TArray<uint8> BadChecksum;
	UTEST_TRUE(TEXT("Bad checksum file"), LoadTestBytes(*this, TEXT("FreeD/freed_d1_bad_checksum.bin"), BadChecksum));
	ExpectRejection(TEXT("Bad checksum"), BadChecksum, EOrvaneDatagramRejection::Checksum);

	const TArray<uint8> Truncated = FindNegativeVector(*Vectors, TEXT("freed_d1_truncated"));
	UTEST_EQUAL(TEXT("Truncated vector length"), Truncated.Num(), 28);
	ExpectRejection(TEXT("Truncated"), Truncated, EOrvaneDatagramRejection::Length);

	// One message per datagram: two back to back are not split up and neither is read.
	const TArray<uint8> Concatenated = FindNegativeVector(*Vectors, TEXT("freed_d1_two_messages_in_one_datagram"));
	UTEST_EQUAL(TEXT("Concatenated vector length"), Concatenated.Num(), 58);
	ExpectRejection(TEXT("Two messages in one datagram"), Concatenated, EOrvaneDatagramRejection::Length);

	for (int32 Length = 1; Length < FOrvaneFreeD::MessageSize; ++Length)
	{
		ExpectRejection(FString::Printf(TEXT("First %d bytes"), Length), TArray<uint8>(Vector1.GetData(), Length),
			EOrvaneDatagramRejection::Length);
	}
	ExpectRejection(TEXT("Empty datagram"), TArray<uint8>(), EOrvaneDatagramRejection::Length);

	ExpectRejection(TEXT("System status type D2"), WithType(Vector1, 0xD2), EOrvaneDatagramRejection::UnknownType);
	ExpectRejection(TEXT("Poll type D0"), WithType(Vector1, 0xD0), EOrvaneDatagramRejection::UnknownType);
	ExpectRejection(TEXT("Diagnostic type DB"), WithType(Vector1, 0xDB), EOrvaneDatagramRejection::UnknownType);
	ExpectRejection(TEXT("Not a FreeD type"), WithType(Vector1, 0xA2), EOrvaneDatagramRejection::BadHeader);

	// The checksum catches any one flipped bit after the type byte.
	for (int32 Index = 1; Index < FOrvaneFreeD::MessageSize; ++Index)
	{
		for (int32 Bit = 0; Bit < 8; ++Bit)
		{
			TArray<uint8> Flipped = Vector1;
			Flipped[Index] ^= uint8(1 << Bit);
			ExpectRejection(FString::Printf(TEXT("Bit %d of byte %d flipped"), Bit, Index), Flipped,
				EOrvaneDatagramRejection::Checksum);
		}
	}
	return true;
}

IMPLEMENT_SIMPLE_AUTOMATION_TEST(FOrvaneDecodingFreeDThroughDecoderTest,
	"Orvane.Tracking.Decoding.FreeD.ThroughDatagramDecoder",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)

bool FOrvaneDecodingFreeDThroughDecoderTest::RunTest(const FString& Parameters)
{
	using namespace UE::OrvaneTracking::Tests;
	using namespace UE::OrvaneTracking::Tests::FreeD;

	const TSharedPtr<FJsonObject> Vectors = LoadTestJson(*this, VectorsFile);
	UTEST_NOT_NULL(TEXT("Vectors file"), Vectors.Get());
	TArray<uint8> Vector1;
	TArray<uint8> Vector2;
	TArray<uint8> BadChecksum;
	UTEST_TRUE(TEXT("Vector 1"), LoadTestBytes(*this, TEXT("FreeD/freed_d1_vector1.bin"), Vector1));
	UTEST_TRUE(TEXT("Vector 2"), LoadTestBytes(*this, TEXT("FreeD/freed_d1_vector2.bin"), Vector2));
	UTEST_TRUE(TEXT("Bad checksum"), LoadTestBytes(*this, TEXT("FreeD/freed_d1_bad_checksum.bin"), BadChecksum));
	const TArray<uint8> Concatenated = FindNegativeVector(*Vectors, TEXT("freed_d1_two_messages_in_one_datagram"));

	FOrvaneDatagramDecoder Decoder;
	TArray<FOrvaneTrackingSample> Samples;
	const uint64 Sender = FOrvaneDatagramDecoder::MakeSenderKey(0x7F000001, 40000);

	const FOrvaneDatagramResult First = Decoder.Decode(Sender, Vector1, Samples);
	TestTrue(TEXT("Vector 1 is FreeD"),
		First.Protocol == TOptional<EOrvaneTrackingProtocol>(EOrvaneTrackingProtocol::FreeD));
	TestFalse(TEXT("Vector 1 accepted"), First.WasRejected());
	TestEqual(TEXT("Vector 1 gives one sample"), First.NumSamples, 1);

	const FOrvaneDatagramResult Second = Decoder.Decode(Sender, Vector2, Samples);
	TestEqual(TEXT("Vector 2 gives one sample"), Second.NumSamples, 1);
	UTEST_EQUAL(TEXT("Samples so far"), Samples.Num(), 2);
	TestEqual(TEXT("Camera of vector 1"), int64(Samples[0].SourceNumber), int64(1));
	TestEqual(TEXT("Camera of vector 2"), int64(Samples[1].SourceNumber), int64(255));

	const FOrvaneDatagramResult Bad = Decoder.Decode(Sender, BadChecksum, Samples);
	TestTrue(TEXT("Bad checksum rejected as such"),
		Bad.Rejection == TOptional<EOrvaneDatagramRejection>(EOrvaneDatagramRejection::Checksum));
	const FOrvaneDatagramResult Double = Decoder.Decode(Sender, Concatenated, Samples);
	TestTrue(TEXT("Two messages rejected by length"),
		Double.Rejection == TOptional<EOrvaneDatagramRejection>(EOrvaneDatagramRejection::Length));
	TestEqual(TEXT("No sample from rejected datagrams"), Samples.Num(), 2);

	const FOrvaneDatagramCounters& Counters = Decoder.GetCounters();
	TestEqual(TEXT("Datagrams counted"), Counters.Datagrams, uint64(4));
	TestEqual(TEXT("Samples counted"), Counters.Samples, uint64(2));
	TestEqual(TEXT("Checksum rejections"), Counters.GetRejections(EOrvaneDatagramRejection::Checksum), uint64(1));
	TestEqual(TEXT("Length rejections"), Counters.GetRejections(EOrvaneDatagramRejection::Length), uint64(1));
	TestEqual(TEXT("All rejections"), Counters.GetTotalRejections(), uint64(2));
	return true;
}

#endif // WITH_DEV_AUTOMATION_TESTS

// Copyright Orvane. All Rights Reserved.

#include "Tests/DecodingTestData.h"

#if WITH_DEV_AUTOMATION_TESTS

#include "Containers/StringConv.h"
#include "Decoding/OrvaneTrackingSample.h"
#include "Dom/JsonObject.h"
#include "Interfaces/IPluginManager.h"
#include "Misc/AutomationTest.h"
#include "Misc/FileHelper.h"
#include "Misc/Paths.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace UE::OrvaneTracking::Tests
{
	namespace
	{
		template <typename ValueType>
		bool TestOptionalEqual(FAutomationTestBase& Test, const FString& What, const TOptional<ValueType>& Actual,
			const TOptional<ValueType>& Expected)
		{
			if (Actual.IsSet() != Expected.IsSet())
			{
				Test.AddError(FString::Printf(TEXT("%s: set in one sample only (actual %s, expected %s)."), *What,
					Actual.IsSet() ? TEXT("set") : TEXT("unset"), Expected.IsSet() ? TEXT("set") : TEXT("unset")));
				return false;
			}
			if (Actual.IsSet() && !(*Actual == *Expected))
			{
				Test.AddError(FString::Printf(TEXT("%s: the two samples hold different values."), *What));
				return false;
			}
			return true;
		}

		bool TestOptionalNear(FAutomationTestBase& Test, const FString& What, const TOptional<float>& Actual,
			const TOptional<float>& Expected)
		{
			if (Actual.IsSet() != Expected.IsSet())
			{
				Test.AddError(FString::Printf(TEXT("%s: set in one sample only."), *What));
				return false;
			}
			return !Actual.IsSet() || Test.TestEqual(What, *Actual, *Expected, 1.e-6f);
		}
	} // namespace

	FString GetTrackingTestDataDir()
	{
		const TSharedPtr<IPlugin> Plugin = IPluginManager::Get().FindPlugin(TEXT("Orvane"));
		if (!Plugin.IsValid())
		{
			return FString();
		}
		return FPaths::Combine(Plugin->GetBaseDir(), TEXT("Resources"), TEXT("TestData"), TEXT("Tracking"));
	}

	bool LoadTestBytes(FAutomationTestBase& Test, const FString& RelativePath, TArray<uint8>& OutBytes)
	{
		const FString Dir = GetTrackingTestDataDir();
		if (Dir.IsEmpty())
		{
			Test.AddError(TEXT("The Orvane plug-in is not loaded, so its test data cannot be found."));
			return false;
		}
		const FString Path = FPaths::Combine(Dir, RelativePath);
		if (!FFileHelper::LoadFileToArray(OutBytes, *Path))
		{
			Test.AddError(FString::Printf(TEXT("Cannot read test data file '%s'."), *Path));
			return false;
		}
		return true;
	}

	TSharedPtr<FJsonObject> LoadTestJson(FAutomationTestBase& Test, const FString& RelativePath)
	{
		TArray<uint8> Bytes;
		if (!LoadTestBytes(Test, RelativePath, Bytes))
		{
			return nullptr;
		}
		const FUtf8StringView Text(reinterpret_cast<const UTF8CHAR*>(Bytes.GetData()), Bytes.Num());
		TSharedPtr<FJsonObject> Root;
		if (!FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::CreateFromView(Text), Root) || !Root.IsValid())
		{
			Test.AddError(FString::Printf(TEXT("Test data file '%s' is not a JSON object."), *RelativePath));
			return nullptr;
		}
		return Root;
	}

	TArray<uint8> ParseHex(const FString& Hex)
	{
		TArray<uint8> Bytes;
		int32 Nibbles = 0;
		uint8 Current = 0;
		for (const TCHAR Character : Hex)
		{
			int32 Value = -1;
			if (Character >= TEXT('0') && Character <= TEXT('9'))
			{
				Value = Character - TEXT('0');
			}
			else if (Character >= TEXT('A') && Character <= TEXT('F'))
			{
				Value = Character - TEXT('A') + 10;
			}
			else if (Character >= TEXT('a') && Character <= TEXT('f'))
			{
				Value = Character - TEXT('a') + 10;
			}
			if (Value < 0)
			{
				continue;
			}
			Current = uint8((Current << 4) | Value);
			if (++Nibbles == 2)
			{
				Bytes.Add(Current);
				Nibbles = 0;
				Current = 0;
			}
		}
		return Bytes;
	}

	TArray<uint8> StripJsonWhitespace(const TArray<uint8>& Text)
	{
		TArray<uint8> Result;
		Result.Reserve(Text.Num());
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
				Result.Add(Character);
			}
			else if (Character == '"')
			{
				bInString = true;
				Result.Add(Character);
			}
			else if (Character != ' ' && Character != '\t' && Character != '\r' && Character != '\n')
			{
				Result.Add(Character);
			}
		}
		return Result;
	}

	TArray<uint8> ToUtf8Bytes(const FString& Text)
	{
		const FTCHARToUTF8 Converted(*Text);
		return TArray<uint8>(reinterpret_cast<const uint8*>(Converted.Get()), Converted.Length());
	}

	bool TestSamplesEqual(FAutomationTestBase& Test, const FString& Context, const FOrvaneTrackingSample& Actual,
		const FOrvaneTrackingSample& Expected, double Tolerance)
	{
		auto Name = [&Context](const TCHAR* Field)
		{
			return FString::Printf(TEXT("%s: %s"), *Context, Field);
		};
		bool bEqual = true;
		bEqual &= Test.TestTrue(Name(TEXT("Protocol")), Actual.Protocol == Expected.Protocol);
		bEqual &= Test.TestEqual(Name(TEXT("SourceNumber")), Actual.SourceNumber, Expected.SourceNumber);
		bEqual &= Test.TestEqual(Name(TEXT("SourceId")), Actual.SourceId, Expected.SourceId);
		bEqual &= Test.TestEqual(Name(TEXT("SampleId")), Actual.SampleId, Expected.SampleId);
		bEqual &= Test.TestTrue(Name(TEXT("bHasTransform")), Actual.bHasTransform == Expected.bHasTransform);
		bEqual &= Test.TestTrue(Name(TEXT("Transform")), Actual.Transform.Equals(Expected.Transform, Tolerance));
		bEqual &= TestOptionalNear(Test, Name(TEXT("FocalLength")), Actual.FocalLength, Expected.FocalLength);
		bEqual &= TestOptionalNear(Test, Name(TEXT("Aperture")), Actual.Aperture, Expected.Aperture);
		bEqual &= TestOptionalNear(Test, Name(TEXT("FocusDistance")), Actual.FocusDistance, Expected.FocusDistance);
		bEqual &= TestOptionalNear(Test, Name(TEXT("FilmbackWidth")), Actual.FilmbackWidth, Expected.FilmbackWidth);
		bEqual &= TestOptionalNear(Test, Name(TEXT("FilmbackHeight")), Actual.FilmbackHeight, Expected.FilmbackHeight);
		bEqual &= TestOptionalNear(
			Test, Name(TEXT("EntrancePupilOffset")), Actual.EntrancePupilOffset, Expected.EntrancePupilOffset);
		bEqual &= TestOptionalEqual(Test, Name(TEXT("RawZoomEncoder")), Actual.RawZoomEncoder, Expected.RawZoomEncoder);
		bEqual &=
			TestOptionalEqual(Test, Name(TEXT("RawFocusEncoder")), Actual.RawFocusEncoder, Expected.RawFocusEncoder);
		bEqual &= TestOptionalEqual(Test, Name(TEXT("RawIrisEncoder")), Actual.RawIrisEncoder, Expected.RawIrisEncoder);
		bEqual &= TestOptionalEqual(Test, Name(TEXT("UserData")), Actual.UserData, Expected.UserData);
		bEqual &= TestOptionalNear(Test, Name(TEXT("NormalizedZoom")), Actual.NormalizedZoom, Expected.NormalizedZoom);
		bEqual &=
			TestOptionalNear(Test, Name(TEXT("NormalizedFocus")), Actual.NormalizedFocus, Expected.NormalizedFocus);
		bEqual &= TestOptionalNear(Test, Name(TEXT("NormalizedIris")), Actual.NormalizedIris, Expected.NormalizedIris);
		bEqual &= TestOptionalEqual(Test, Name(TEXT("Timecode")), Actual.Timecode, Expected.Timecode);
		bEqual &= TestOptionalEqual(
			Test, Name(TEXT("SampleSequenceNumber")), Actual.SampleSequenceNumber, Expected.SampleSequenceNumber);
		bEqual &= TestOptionalEqual(Test, Name(TEXT("SampleRate")), Actual.SampleRate, Expected.SampleRate);
		bEqual &=
			TestOptionalEqual(Test, Name(TEXT("SampleTimestamp")), Actual.SampleTimestamp, Expected.SampleTimestamp);
		bEqual &= Test.TestEqual(Name(TEXT("TrackerStatus")), Actual.TrackerStatus, Expected.TrackerStatus);
		bEqual &= Test.TestTrue(Name(TEXT("bHasStatic")), Actual.bHasStatic == Expected.bHasStatic);
		bEqual &= Test.TestEqual(Name(TEXT("CameraMake")), Actual.CameraMake, Expected.CameraMake);
		bEqual &= Test.TestEqual(Name(TEXT("CameraModel")), Actual.CameraModel, Expected.CameraModel);
		bEqual &= Test.TestEqual(Name(TEXT("CameraLabel")), Actual.CameraLabel, Expected.CameraLabel);
		bEqual &=
			Test.TestEqual(Name(TEXT("CameraSerialNumber")), Actual.CameraSerialNumber, Expected.CameraSerialNumber);
		bEqual &= Test.TestEqual(Name(TEXT("LensMake")), Actual.LensMake, Expected.LensMake);
		bEqual &= Test.TestEqual(Name(TEXT("LensModel")), Actual.LensModel, Expected.LensModel);
		bEqual &=
			TestOptionalEqual(Test, Name(TEXT("CaptureFrameRate")), Actual.CaptureFrameRate, Expected.CaptureFrameRate);
		return bEqual;
	}
} // namespace UE::OrvaneTracking::Tests

#endif // WITH_DEV_AUTOMATION_TESTS

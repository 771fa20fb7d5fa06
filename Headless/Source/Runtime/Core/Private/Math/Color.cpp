// Copyright Orvane. All Rights Reserved.

#include "Math/Color.h"

#include "Misc/Parse.h"

const FColor FColor::White(255, 255, 255);
const FColor FColor::Black(0, 0, 0);
const FColor FColor::Transparent(0, 0, 0, 0);
const FColor FColor::Red(255, 0, 0);
const FColor FColor::Green(0, 255, 0);
const FColor FColor::Blue(0, 0, 255);
const FColor FColor::Yellow(255, 255, 0);
const FColor FColor::Cyan(0, 255, 255);
const FColor FColor::Magenta(255, 0, 255);
const FColor FColor::Orange(243, 156, 18);
const FColor FColor::Purple(169, 7, 228);
const FColor FColor::Turquoise(26, 188, 156);
const FColor FColor::Silver(189, 195, 199);
const FColor FColor::Emerald(46, 204, 113);

const FLinearColor FLinearColor::White(1.0f, 1.0f, 1.0f);
const FLinearColor FLinearColor::Gray(0.5f, 0.5f, 0.5f);
const FLinearColor FLinearColor::Black(0.0f, 0.0f, 0.0f);
const FLinearColor FLinearColor::Transparent(0.0f, 0.0f, 0.0f, 0.0f);
const FLinearColor FLinearColor::Red(1.0f, 0.0f, 0.0f);
const FLinearColor FLinearColor::Green(0.0f, 1.0f, 0.0f);
const FLinearColor FLinearColor::Blue(0.0f, 0.0f, 1.0f);
const FLinearColor FLinearColor::Yellow(1.0f, 1.0f, 0.0f);

namespace ColorPrivate
{
	/** Truncating quantization: scaling by 255.999 makes exactly 1.0 map to 255 without rounding up 254.6. */
	uint8 QuantizeFloor(float Value)
	{
		return (uint8)FMath::FloorToInt(FMath::Clamp(Value, 0.0f, 1.0f) * 255.999f);
	}

	uint8 QuantizeNearest(float Value)
	{
		return (uint8)FMath::RoundToInt(FMath::Clamp(Value, 0.0f, 1.0f) * 255.0f);
	}

	int32 HexDigitValue(TCHAR Char)
	{
		if (Char >= TEXT('0') && Char <= TEXT('9'))
		{
			return Char - TEXT('0');
		}
		if (Char >= TEXT('a') && Char <= TEXT('f'))
		{
			return Char - TEXT('a') + 10;
		}
		if (Char >= TEXT('A') && Char <= TEXT('F'))
		{
			return Char - TEXT('A') + 10;
		}
		return INDEX_NONE;
	}

	uint8 ClampToByte(int32 Value)
	{
		return (uint8)FMath::Clamp(Value, 0, 255);
	}
} // namespace ColorPrivate

FLinearColor FColor::ReinterpretAsLinear() const
{
	return FLinearColor(R / 255.0f, G / 255.0f, B / 255.0f, A / 255.0f);
}

FString FColor::ToString() const
{
	return FString::Printf(TEXT("(R=%d,G=%d,B=%d,A=%d)"), (int32)R, (int32)G, (int32)B, (int32)A);
}

FString FColor::ToHex() const
{
	return FString::Printf(TEXT("%02X%02X%02X%02X"), (uint32)R, (uint32)G, (uint32)B, (uint32)A);
}

bool FColor::InitFromString(const FString& InSourceString)
{
	int32 NewR = 0;
	int32 NewG = 0;
	int32 NewB = 0;
	int32 NewA = 255;
	if (!FParse::Value(*InSourceString, TEXT("R="), NewR) || !FParse::Value(*InSourceString, TEXT("G="), NewG) ||
		!FParse::Value(*InSourceString, TEXT("B="), NewB))
	{
		return false;
	}
	FParse::Value(*InSourceString, TEXT("A="), NewA);
	*this = FColor(ColorPrivate::ClampToByte(NewR), ColorPrivate::ClampToByte(NewG), ColorPrivate::ClampToByte(NewB),
		ColorPrivate::ClampToByte(NewA));
	return true;
}

FColor FColor::FromHex(const FString& HexString)
{
	const TCHAR* Digits = *HexString;
	if (Digits[0] == TEXT('#'))
	{
		++Digits;
	}

	int32 Values[8] = {};
	int32 Count = 0;
	for (; Digits[Count] != 0; ++Count)
	{
		if (Count >= 8)
		{
			return FColor(ForceInit);
		}
		Values[Count] = ColorPrivate::HexDigitValue(Digits[Count]);
		if (Values[Count] == INDEX_NONE)
		{
			return FColor(ForceInit);
		}
	}

	switch (Count)
	{
		case 3:
			// Each digit stands for a doubled pair: "F80" is "FF8800".
			return FColor((uint8)(Values[0] * 17), (uint8)(Values[1] * 17), (uint8)(Values[2] * 17));
		case 4:
			return FColor(
				(uint8)(Values[0] * 17), (uint8)(Values[1] * 17), (uint8)(Values[2] * 17), (uint8)(Values[3] * 17));
		case 6:
			return FColor((uint8)(Values[0] * 16 + Values[1]), (uint8)(Values[2] * 16 + Values[3]),
				(uint8)(Values[4] * 16 + Values[5]));
		case 8:
			return FColor((uint8)(Values[0] * 16 + Values[1]), (uint8)(Values[2] * 16 + Values[3]),
				(uint8)(Values[4] * 16 + Values[5]), (uint8)(Values[6] * 16 + Values[7]));
		default:
			return FColor(ForceInit);
	}
}

FLinearColor::FLinearColor(const FColor& Color)
	: R(FMath::SRGBToLinear(Color.R / 255.0f))
	, G(FMath::SRGBToLinear(Color.G / 255.0f))
	, B(FMath::SRGBToLinear(Color.B / 255.0f))
	, A(Color.A / 255.0f)
{
}

FLinearColor FLinearColor::FromSRGBColor(const FColor& Color)
{
	return FLinearColor(Color);
}

FLinearColor FLinearColor::FromPow22Color(const FColor& Color)
{
	return FLinearColor(FMath::Pow(Color.R / 255.0f, 2.2f), FMath::Pow(Color.G / 255.0f, 2.2f),
		FMath::Pow(Color.B / 255.0f, 2.2f), Color.A / 255.0f);
}

FColor FLinearColor::ToFColor(const bool bSRGB) const
{
	float OutR = FMath::Clamp(R, 0.0f, 1.0f);
	float OutG = FMath::Clamp(G, 0.0f, 1.0f);
	float OutB = FMath::Clamp(B, 0.0f, 1.0f);
	if (bSRGB)
	{
		OutR = FMath::LinearToSRGB(OutR);
		OutG = FMath::LinearToSRGB(OutG);
		OutB = FMath::LinearToSRGB(OutB);
	}
	return FColor(ColorPrivate::QuantizeFloor(OutR), ColorPrivate::QuantizeFloor(OutG),
		ColorPrivate::QuantizeFloor(OutB), ColorPrivate::QuantizeFloor(A));
}

FColor FLinearColor::ToFColorSRGB() const
{
	return FColor(ColorPrivate::QuantizeNearest(FMath::LinearToSRGB(FMath::Clamp(R, 0.0f, 1.0f))),
		ColorPrivate::QuantizeNearest(FMath::LinearToSRGB(FMath::Clamp(G, 0.0f, 1.0f))),
		ColorPrivate::QuantizeNearest(FMath::LinearToSRGB(FMath::Clamp(B, 0.0f, 1.0f))),
		ColorPrivate::QuantizeNearest(A));
}

FColor FLinearColor::QuantizeRound() const
{
	return FColor(ColorPrivate::QuantizeNearest(R), ColorPrivate::QuantizeNearest(G), ColorPrivate::QuantizeNearest(B),
		ColorPrivate::QuantizeNearest(A));
}

FColor FLinearColor::Quantize() const
{
	return FColor(ColorPrivate::QuantizeFloor(R), ColorPrivate::QuantizeFloor(G), ColorPrivate::QuantizeFloor(B),
		ColorPrivate::QuantizeFloor(A));
}

FLinearColor FLinearColor::LinearRGBToHSV() const
{
	const float RGBMin = FMath::Min3(R, G, B);
	const float RGBMax = FMath::Max3(R, G, B);
	const float RGBRange = RGBMax - RGBMin;

	float Hue = 0.0f;
	if (RGBRange > 0.0f)
	{
		if (RGBMax == R)
		{
			Hue = 60.0f * FMath::Fmod((G - B) / RGBRange, 6.0f);
		}
		else if (RGBMax == G)
		{
			Hue = 60.0f * ((B - R) / RGBRange + 2.0f);
		}
		else
		{
			Hue = 60.0f * ((R - G) / RGBRange + 4.0f);
		}
		if (Hue < 0.0f)
		{
			Hue += 360.0f;
		}
	}
	const float Saturation = (RGBMax == 0.0f) ? 0.0f : RGBRange / RGBMax;
	return FLinearColor(Hue, Saturation, RGBMax, A);
}

FLinearColor FLinearColor::HSVToLinearRGB() const
{
	const float Hue = FMath::ClampAxis(R);
	const float Saturation = G;
	const float Value = B;

	const float Chroma = Value * Saturation;
	const float HuePrime = Hue / 60.0f;
	const float Second = Chroma * (1.0f - FMath::Abs(FMath::Fmod(HuePrime, 2.0f) - 1.0f));
	const float Offset = Value - Chroma;

	float OutR = 0.0f;
	float OutG = 0.0f;
	float OutB = 0.0f;
	switch (FMath::FloorToInt(HuePrime))
	{
		case 0:
			OutR = Chroma;
			OutG = Second;
			break;
		case 1:
			OutR = Second;
			OutG = Chroma;
			break;
		case 2:
			OutG = Chroma;
			OutB = Second;
			break;
		case 3:
			OutG = Second;
			OutB = Chroma;
			break;
		case 4:
			OutR = Second;
			OutB = Chroma;
			break;
		default:
			OutR = Chroma;
			OutB = Second;
			break;
	}
	return FLinearColor(OutR + Offset, OutG + Offset, OutB + Offset, A);
}

FString FLinearColor::ToString() const
{
	return FString::Printf(TEXT("(R=%f,G=%f,B=%f,A=%f)"), (double)R, (double)G, (double)B, (double)A);
}

bool FLinearColor::InitFromString(const FString& InSourceString)
{
	float NewR = 0.0f;
	float NewG = 0.0f;
	float NewB = 0.0f;
	float NewA = 1.0f;
	if (!FParse::Value(*InSourceString, TEXT("R="), NewR) || !FParse::Value(*InSourceString, TEXT("G="), NewG) ||
		!FParse::Value(*InSourceString, TEXT("B="), NewB))
	{
		return false;
	}
	FParse::Value(*InSourceString, TEXT("A="), NewA);
	*this = FLinearColor(NewR, NewG, NewB, NewA);
	return true;
}

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Math/MathFwd.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"

/**
 * An 8-bit-per-channel color as stored in textures and on screen, in sRGB. The bytes are laid out
 * B, G, R, A, which makes DWColor() 0xAARRGGBB.
 */
struct FColor
{
	uint8 B = 0;
	uint8 G = 0;
	uint8 R = 0;
	uint8 A = 0;

	static CORE_API const FColor White;
	static CORE_API const FColor Black;
	static CORE_API const FColor Transparent;
	static CORE_API const FColor Red;
	static CORE_API const FColor Green;
	static CORE_API const FColor Blue;
	static CORE_API const FColor Yellow;
	static CORE_API const FColor Cyan;
	static CORE_API const FColor Magenta;
	static CORE_API const FColor Orange;
	static CORE_API const FColor Purple;
	static CORE_API const FColor Turquoise;
	static CORE_API const FColor Silver;
	static CORE_API const FColor Emerald;

	constexpr FColor() = default;
	explicit constexpr FColor(EForceInit) {}
	constexpr FColor(uint8 InR, uint8 InG, uint8 InB, uint8 InA = 255)
		: B(InB)
		, G(InG)
		, R(InR)
		, A(InA)
	{
	}

	/** Builds a color from its packed 0xAARRGGBB form. */
	explicit constexpr FColor(uint32 InColor)
		: B((uint8)(InColor & 0xff))
		, G((uint8)((InColor >> 8) & 0xff))
		, R((uint8)((InColor >> 16) & 0xff))
		, A((uint8)((InColor >> 24) & 0xff))
	{
	}

	/** The color packed as 0xAARRGGBB. */
	constexpr uint32 DWColor() const { return ((uint32)A << 24) | ((uint32)R << 16) | ((uint32)G << 8) | (uint32)B; }

	constexpr bool operator==(const FColor& C) const { return DWColor() == C.DWColor(); }
	constexpr bool operator!=(const FColor& C) const { return DWColor() != C.DWColor(); }

	/** Adds channel by channel, saturating at 255. */
	FColor& operator+=(const FColor& C)
	{
		R = (uint8)FMath::Min((int32)R + (int32)C.R, 255);
		G = (uint8)FMath::Min((int32)G + (int32)C.G, 255);
		B = (uint8)FMath::Min((int32)B + (int32)C.B, 255);
		A = (uint8)FMath::Min((int32)A + (int32)C.A, 255);
		return *this;
	}

	/** A copy with a different alpha. */
	constexpr FColor WithAlpha(uint8 Alpha) const { return FColor(R, G, B, Alpha); }

	/** Reads the bytes as linear values divided by 255, without sRGB decoding. */
	CORE_API FLinearColor ReinterpretAsLinear() const;

	/** Formats as "(R=255,G=0,B=0,A=255)". */
	CORE_API FString ToString() const;

	/** Formats as eight upper-case hex digits, "RRGGBBAA". */
	CORE_API FString ToHex() const;

	/** Reads a color written by ToString; returns false and leaves it unchanged if a channel is missing. */
	CORE_API bool InitFromString(const FString& InSourceString);

	/**
	 * Parses "RGB", "RRGGBB" or "RRGGBBAA" hex digits, optionally after a '#'. Short forms have full
	 * alpha. Anything else gives transparent black.
	 */
	static CORE_API FColor FromHex(const FString& HexString);
};

/** A color with float channels in linear space, used for lighting, materials and blending. */
struct FLinearColor
{
	float R = 0.0f;
	float G = 0.0f;
	float B = 0.0f;
	float A = 0.0f;

	static CORE_API const FLinearColor White;
	static CORE_API const FLinearColor Gray;
	static CORE_API const FLinearColor Black;
	static CORE_API const FLinearColor Transparent;
	static CORE_API const FLinearColor Red;
	static CORE_API const FLinearColor Green;
	static CORE_API const FLinearColor Blue;
	static CORE_API const FLinearColor Yellow;

	constexpr FLinearColor() = default;
	explicit constexpr FLinearColor(EForceInit) {}
	constexpr FLinearColor(float InR, float InG, float InB, float InA = 1.0f)
		: R(InR)
		, G(InG)
		, B(InB)
		, A(InA)
	{
	}

	/** Decodes an sRGB color to linear space; alpha is taken as it is. */
	CORE_API FLinearColor(const FColor& Color);

	explicit FLinearColor(const FVector3f& Vector)
		: R(Vector.X)
		, G(Vector.Y)
		, B(Vector.Z)
		, A(1.0f)
	{
	}

	explicit FLinearColor(const FVector3d& Vector)
		: R((float)Vector.X)
		, G((float)Vector.Y)
		, B((float)Vector.Z)
		, A(1.0f)
	{
	}

	/** Decodes an sRGB color to linear space. */
	static CORE_API FLinearColor FromSRGBColor(const FColor& Color);

	/** Decodes a color stored with a plain 2.2 gamma. */
	static CORE_API FLinearColor FromPow22Color(const FColor& Color);

	/**
	 * Quantizes to 8 bits per channel after clamping to [0, 1], encoding to sRGB when bSRGB is true.
	 * Channels are truncated (scaled by 255.999), so 0.5 becomes 127.
	 */
	CORE_API FColor ToFColor(const bool bSRGB) const;

	/** Encodes to sRGB and quantizes with rounding to the nearest 8-bit value. */
	CORE_API FColor ToFColorSRGB() const;

	/** Quantizes each linear channel with rounding, without sRGB encoding. */
	CORE_API FColor QuantizeRound() const;

	/** Quantizes each linear channel by truncation, without sRGB encoding. */
	CORE_API FColor Quantize() const;

	/** Converts this linear RGB color to HSV: R = hue in degrees, G = saturation, B = value. */
	CORE_API FLinearColor LinearRGBToHSV() const;

	/** Converts an HSV color (R = hue in degrees, G = saturation, B = value) to linear RGB. */
	CORE_API FLinearColor HSVToLinearRGB() const;

	/** Formats as "(R=1.000000,G=0.000000,B=0.000000,A=1.000000)". */
	CORE_API FString ToString() const;

	/** Reads a color written by ToString; alpha is optional and defaults to 1. */
	CORE_API bool InitFromString(const FString& InSourceString);

	FLinearColor operator+(const FLinearColor& C) const { return FLinearColor(R + C.R, G + C.G, B + C.B, A + C.A); }
	FLinearColor operator-(const FLinearColor& C) const { return FLinearColor(R - C.R, G - C.G, B - C.B, A - C.A); }
	FLinearColor operator*(const FLinearColor& C) const { return FLinearColor(R * C.R, G * C.G, B * C.B, A * C.A); }
	FLinearColor operator/(const FLinearColor& C) const { return FLinearColor(R / C.R, G / C.G, B / C.B, A / C.A); }
	FLinearColor operator*(float Scalar) const { return FLinearColor(R * Scalar, G * Scalar, B * Scalar, A * Scalar); }
	FLinearColor operator/(float Scalar) const { return FLinearColor(R / Scalar, G / Scalar, B / Scalar, A / Scalar); }

	FLinearColor& operator+=(const FLinearColor& C)
	{
		*this = *this + C;
		return *this;
	}

	FLinearColor& operator-=(const FLinearColor& C)
	{
		*this = *this - C;
		return *this;
	}

	FLinearColor& operator*=(const FLinearColor& C)
	{
		*this = *this * C;
		return *this;
	}

	FLinearColor& operator*=(float Scalar)
	{
		*this = *this * Scalar;
		return *this;
	}

	FLinearColor& operator/=(float Scalar)
	{
		*this = *this / Scalar;
		return *this;
	}

	float& Component(int32 Index) { return Index == 0 ? R : (Index == 1 ? G : (Index == 2 ? B : A)); }
	float Component(int32 Index) const { return Index == 0 ? R : (Index == 1 ? G : (Index == 2 ? B : A)); }

	bool operator==(const FLinearColor& C) const { return R == C.R && G == C.G && B == C.B && A == C.A; }
	bool operator!=(const FLinearColor& C) const { return !(*this == C); }

	bool Equals(const FLinearColor& C, float Tolerance = UE_KINDA_SMALL_NUMBER) const
	{
		return FMath::Abs(R - C.R) < Tolerance && FMath::Abs(G - C.G) < Tolerance && FMath::Abs(B - C.B) < Tolerance &&
			   FMath::Abs(A - C.A) < Tolerance;
	}

	/** Every channel clamped to [InMin, InMax]. */
	FLinearColor GetClamped(float InMin = 0.0f, float InMax = 1.0f) const
	{
		return FLinearColor(FMath::Clamp(R, InMin, InMax), FMath::Clamp(G, InMin, InMax), FMath::Clamp(B, InMin, InMax),
			FMath::Clamp(A, InMin, InMax));
	}

	FLinearColor CopyWithNewOpacity(float NewOpacity) const { return FLinearColor(R, G, B, NewOpacity); }

	/** Perceived brightness with the weights 0.3, 0.59, 0.11. */
	float GetLuminance() const { return R * 0.3f + G * 0.59f + B * 0.11f; }

	float GetMax() const { return FMath::Max(FMath::Max(FMath::Max(R, G), B), A); }
	float GetMin() const { return FMath::Min(FMath::Min(FMath::Min(R, G), B), A); }
	bool IsAlmostBlack() const
	{
		return FMath::Square(R) < UE_DELTA && FMath::Square(G) < UE_DELTA && FMath::Square(B) < UE_DELTA;
	}

	static float Dist(const FLinearColor& V1, const FLinearColor& V2)
	{
		return FMath::Sqrt(FMath::Square(V2.R - V1.R) + FMath::Square(V2.G - V1.G) + FMath::Square(V2.B - V1.B) +
						   FMath::Square(V2.A - V1.A));
	}
};

inline FLinearColor operator*(float Scalar, const FLinearColor& Color)
{
	return Color * Scalar;
}

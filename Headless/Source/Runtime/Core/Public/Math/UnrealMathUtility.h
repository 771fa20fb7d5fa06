// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Math/MathFwd.h"

#include <cmath>
#include <type_traits>

#define UE_PI (3.1415926535897932f)
#define UE_SMALL_NUMBER (1.e-8f)
#define UE_KINDA_SMALL_NUMBER (1.e-4f)
#define UE_BIG_NUMBER (3.4e+38f)
#define UE_EULERS_NUMBER (2.71828182845904523536f)
#define UE_GOLDEN_RATIO (1.6180339887498948482045868343656381f)
#define UE_FLOAT_NON_FRACTIONAL (8388608.f)
#define UE_INV_PI (0.31830988618f)
#define UE_HALF_PI (1.57079632679f)
#define UE_TWO_PI (6.28318530717f)
#define UE_PI_SQUARED (9.86960440108f)
#define UE_SQRT_2 (1.4142135623730950488016887242097f)
#define UE_INV_SQRT_2 (0.70710678118654752440084436210485f)
#define UE_DELTA (0.00001f)
#define UE_FLOAT_NORMAL_THRESH (0.0001f)
#define UE_THRESH_VECTOR_NORMALIZED (0.01f)
#define UE_THRESH_QUAT_NORMALIZED (0.01f)

#define UE_DOUBLE_PI (3.141592653589793238462643383279502884197169399)
#define UE_DOUBLE_SMALL_NUMBER (1.e-8)
#define UE_DOUBLE_KINDA_SMALL_NUMBER (1.e-4)
#define UE_DOUBLE_BIG_NUMBER (3.4e+38)
#define UE_DOUBLE_EULERS_NUMBER (2.7182818284590452353602874713526624977572)
#define UE_DOUBLE_INV_PI (0.31830988618379067154)
#define UE_DOUBLE_HALF_PI (1.57079632679489661923)
#define UE_DOUBLE_TWO_PI (6.28318530717958647692)
#define UE_DOUBLE_PI_SQUARED (9.86960440108935861883)
#define UE_DOUBLE_SQRT_2 (1.4142135623730950488016887242097)
#define UE_DOUBLE_DELTA (0.00001)
#define UE_DOUBLE_NORMAL_THRESH (0.0001)

// The names from before the UE_ prefix; plug-in code of that era still uses them.
#define PI UE_PI
#define SMALL_NUMBER UE_SMALL_NUMBER
#define KINDA_SMALL_NUMBER UE_KINDA_SMALL_NUMBER
#define BIG_NUMBER UE_BIG_NUMBER
#define INV_PI UE_INV_PI
#define HALF_PI UE_HALF_PI
#define TWO_PI UE_TWO_PI
#define DELTA UE_DELTA
#define DOUBLE_PI UE_DOUBLE_PI
#define DOUBLE_SMALL_NUMBER UE_DOUBLE_SMALL_NUMBER
#define DOUBLE_KINDA_SMALL_NUMBER UE_DOUBLE_KINDA_SMALL_NUMBER

/** Scalar math helpers shared by every math type. */
struct FMath
{
	template <typename T>
	static constexpr T Abs(const T A)
	{
		return (A < (T)0) ? -A : A;
	}

	template <typename T>
	static constexpr T Sign(const T A)
	{
		return (A > (T)0) ? (T)1 : ((A < (T)0) ? (T)-1 : (T)0);
	}

	template <typename T>
	static constexpr T Max(const T A, const T B)
	{
		return (B < A) ? A : B;
	}

	template <typename T>
	static constexpr T Min(const T A, const T B)
	{
		return (A < B) ? A : B;
	}

	template <typename T>
	static constexpr T Max3(const T A, const T B, const T C)
	{
		return Max(Max(A, B), C);
	}

	template <typename T>
	static constexpr T Min3(const T A, const T B, const T C)
	{
		return Min(Min(A, B), C);
	}

	template <typename T>
	static constexpr T Clamp(const T X, const T MinValue, const T MaxValue)
	{
		return (X < MinValue) ? MinValue : (X < MaxValue) ? X : MaxValue;
	}

	template <typename T>
	static constexpr T Square(const T A)
	{
		return A * A;
	}

	template <typename T>
	static constexpr T Cube(const T A)
	{
		return A * A * A;
	}

	template <typename T>
	static constexpr bool IsPowerOfTwo(T Value)
	{
		return (Value & (Value - 1)) == (T)0;
	}

	template <typename T>
	static constexpr T DivideAndRoundUp(T Dividend, T Divisor)
	{
		return (Dividend + Divisor - 1) / Divisor;
	}

	template <typename T>
	static constexpr T DivideAndRoundDown(T Dividend, T Divisor)
	{
		return Dividend / Divisor;
	}

	static float Sqrt(float Value) { return std::sqrt(Value); }
	static double Sqrt(double Value) { return std::sqrt(Value); }
	static float InvSqrt(float Value) { return 1.0f / std::sqrt(Value); }
	static double InvSqrt(double Value) { return 1.0 / std::sqrt(Value); }
	static float Pow(float A, float B) { return std::pow(A, B); }
	static double Pow(double A, double B) { return std::pow(A, B); }
	static float Exp(float Value) { return std::exp(Value); }
	static double Exp(double Value) { return std::exp(Value); }
	static float Exp2(float Value) { return std::exp2(Value); }
	static double Exp2(double Value) { return std::exp2(Value); }
	static float Loge(float Value) { return std::log(Value); }
	static double Loge(double Value) { return std::log(Value); }
	static float LogX(float Base, float Value) { return std::log(Value) / std::log(Base); }
	static double LogX(double Base, double Value) { return std::log(Value) / std::log(Base); }
	static float Log2(float Value) { return std::log2(Value); }
	static double Log2(double Value) { return std::log2(Value); }
	static float Sin(float Value) { return std::sin(Value); }
	static double Sin(double Value) { return std::sin(Value); }
	static float Cos(float Value) { return std::cos(Value); }
	static double Cos(double Value) { return std::cos(Value); }
	static float Tan(float Value) { return std::tan(Value); }
	static double Tan(double Value) { return std::tan(Value); }
	static float Asin(float Value) { return std::asin(Clamp(Value, -1.0f, 1.0f)); }
	static double Asin(double Value) { return std::asin(Clamp(Value, -1.0, 1.0)); }
	static float Acos(float Value) { return std::acos(Clamp(Value, -1.0f, 1.0f)); }
	static double Acos(double Value) { return std::acos(Clamp(Value, -1.0, 1.0)); }
	static float Atan(float Value) { return std::atan(Value); }
	static double Atan(double Value) { return std::atan(Value); }
	static float Atan2(float Y, float X) { return std::atan2(Y, X); }
	static double Atan2(double Y, double X) { return std::atan2(Y, X); }
	static float Fmod(float X, float Y) { return (Y == 0.0f) ? 0.0f : std::fmod(X, Y); }
	static double Fmod(double X, double Y) { return (Y == 0.0) ? 0.0 : std::fmod(X, Y); }

	template <typename T>
	static void SinCos(T* ScalarSin, T* ScalarCos, T Value)
	{
		*ScalarSin = std::sin(Value);
		*ScalarCos = std::cos(Value);
	}

	static constexpr float DegreesToRadians(float DegVal) { return DegVal * (UE_PI / 180.0f); }
	static constexpr double DegreesToRadians(double DegVal) { return DegVal * (UE_DOUBLE_PI / 180.0); }
	static constexpr float RadiansToDegrees(float RadVal) { return RadVal * (180.0f / UE_PI); }
	static constexpr double RadiansToDegrees(double RadVal) { return RadVal * (180.0 / UE_DOUBLE_PI); }

	static bool IsNaN(float A) { return std::isnan(A); }
	static bool IsNaN(double A) { return std::isnan(A); }
	static bool IsFinite(float A) { return std::isfinite(A); }
	static bool IsFinite(double A) { return std::isfinite(A); }

	static bool IsNearlyEqual(float A, float B, float ErrorTolerance = UE_SMALL_NUMBER)
	{
		return Abs(A - B) <= ErrorTolerance;
	}

	static bool IsNearlyEqual(double A, double B, double ErrorTolerance = UE_DOUBLE_SMALL_NUMBER)
	{
		return Abs(A - B) <= ErrorTolerance;
	}

	static bool IsNearlyZero(float Value, float ErrorTolerance = UE_SMALL_NUMBER)
	{
		return Abs(Value) <= ErrorTolerance;
	}

	static bool IsNearlyZero(double Value, double ErrorTolerance = UE_DOUBLE_SMALL_NUMBER)
	{
		return Abs(Value) <= ErrorTolerance;
	}

	/** Truncates toward zero. */
	static int32 TruncToInt(float F) { return (int32)F; }
	static int32 TruncToInt(double F) { return (int32)F; }
	static int32 TruncToInt32(float F) { return (int32)F; }
	static int32 TruncToInt32(double F) { return (int32)F; }
	static int64 TruncToInt64(double F) { return (int64)F; }
	static float TruncToFloat(float F) { return std::trunc(F); }
	static double TruncToDouble(double F) { return std::trunc(F); }
	static double TruncToFloat(double F) { return std::trunc(F); }

	static int32 FloorToInt(float F) { return (int32)std::floor(F); }
	static int32 FloorToInt(double F) { return (int32)std::floor(F); }
	static int32 FloorToInt32(double F) { return (int32)std::floor(F); }
	static int64 FloorToInt64(double F) { return (int64)std::floor(F); }
	static float FloorToFloat(float F) { return std::floor(F); }
	static double FloorToDouble(double F) { return std::floor(F); }
	static double FloorToFloat(double F) { return std::floor(F); }

	static int32 CeilToInt(float F) { return (int32)std::ceil(F); }
	static int32 CeilToInt(double F) { return (int32)std::ceil(F); }
	static int32 CeilToInt32(double F) { return (int32)std::ceil(F); }
	static int64 CeilToInt64(double F) { return (int64)std::ceil(F); }
	static float CeilToFloat(float F) { return std::ceil(F); }
	static double CeilToDouble(double F) { return std::ceil(F); }
	static double CeilToFloat(double F) { return std::ceil(F); }

	/** Rounds half-way cases up (toward positive infinity), as the engine does: -1.5 becomes -1. */
	static int32 RoundToInt(float F) { return FloorToInt(F + 0.5f); }
	static int32 RoundToInt(double F) { return FloorToInt(F + 0.5); }
	static int32 RoundToInt32(double F) { return FloorToInt(F + 0.5); }
	static int64 RoundToInt64(double F) { return FloorToInt64(F + 0.5); }
	static float RoundToFloat(float F) { return std::floor(F + 0.5f); }
	static double RoundToDouble(double F) { return std::floor(F + 0.5); }
	static double RoundToFloat(double F) { return std::floor(F + 0.5); }

	static float Frac(float Value) { return Value - std::floor(Value); }
	static double Frac(double Value) { return Value - std::floor(Value); }

	template <typename T, typename U>
	static constexpr T Lerp(const T& A, const T& B, const U& Alpha)
	{
		return (T)(A + Alpha * (B - A));
	}

	template <typename T>
	static constexpr T GetRangePct(T MinValue, T MaxValue, T Value)
	{
		const T Divisor = MaxValue - MinValue;
		return (Divisor == (T)0) ? ((Value >= MaxValue) ? (T)1 : (T)0) : (Value - MinValue) / Divisor;
	}

	/** Moves Current toward Target at InterpSpeed per second; a speed of zero or less jumps to Target. */
	template <typename T>
	static T FInterpTo(T Current, T Target, T DeltaTime, T InterpSpeed)
	{
		if (InterpSpeed <= (T)0)
		{
			return Target;
		}
		const T Dist = Target - Current;
		if (Square(Dist) < (T)UE_SMALL_NUMBER)
		{
			return Target;
		}
		return Current + Dist * Clamp(DeltaTime * InterpSpeed, (T)0, (T)1);
	}

	/** Moves Current toward Target by at most InterpSpeed per second. */
	template <typename T>
	static T FInterpConstantTo(T Current, T Target, T DeltaTime, T InterpSpeed)
	{
		const T Dist = Target - Current;
		if (Square(Dist) < (T)UE_SMALL_NUMBER)
		{
			return Target;
		}
		const T Step = InterpSpeed * DeltaTime;
		return Current + Clamp(Dist, -Step, Step);
	}

	/** Maps an angle in degrees into (-180, 180]. */
	template <typename T>
	static T UnwindDegrees(T A)
	{
		while (A > (T)180)
		{
			A -= (T)360;
		}
		while (A < (T)-180)
		{
			A += (T)360;
		}
		return A;
	}

	/** Maps an angle in radians into (-PI, PI]. */
	template <typename T>
	static T UnwindRadians(T A)
	{
		while (A > (T)UE_DOUBLE_PI)
		{
			A -= (T)UE_DOUBLE_TWO_PI;
		}
		while (A < (T)-UE_DOUBLE_PI)
		{
			A += (T)UE_DOUBLE_TWO_PI;
		}
		return A;
	}

	/** Clamps an angle in degrees to the arc from MinAngleDegrees to MaxAngleDegrees, going the shorter way. */
	template <typename T>
	static T ClampAngle(T AngleDegrees, T MinAngleDegrees, T MaxAngleDegrees)
	{
		const T MaxDelta = ClampAxis(MaxAngleDegrees - MinAngleDegrees) * (T)0.5;
		const T RangeCenter = ClampAxis(MinAngleDegrees + MaxDelta);
		const T DeltaFromCenter = NormalizeAxis(AngleDegrees - RangeCenter);
		if (DeltaFromCenter > MaxDelta)
		{
			return NormalizeAxis(RangeCenter + MaxDelta);
		}
		if (DeltaFromCenter < -MaxDelta)
		{
			return NormalizeAxis(RangeCenter - MaxDelta);
		}
		return NormalizeAxis(AngleDegrees);
	}

	/** Maps an angle in degrees into [0, 360). */
	template <typename T>
	static T ClampAxis(T Angle)
	{
		Angle = std::fmod(Angle, (T)360);
		if (Angle < (T)0)
		{
			Angle += (T)360;
		}
		return Angle;
	}

	/** Maps an angle in degrees into (-180, 180]. */
	template <typename T>
	static T NormalizeAxis(T Angle)
	{
		Angle = ClampAxis(Angle);
		if (Angle > (T)180)
		{
			Angle -= (T)360;
		}
		return Angle;
	}

	/** Seeds the generator behind FRand, RandHelper and RandRange. */
	static CORE_API void RandInit(int32 Seed);

	/** A random number in [0, 1). */
	static CORE_API float FRand();

	/** A random integer in [0, A - 1]; 0 when A is zero or negative. */
	static CORE_API int32 RandHelper(int32 A);

	/** A random integer in [Min, Max], both inclusive. */
	static CORE_API int32 RandRange(int32 Min, int32 Max);

	/** A random integer in [Min, Max], both inclusive. */
	static CORE_API int64 RandRange(int64 Min, int64 Max);

	/** A random number in [Min, Max]. */
	static CORE_API float FRandRange(float InMin, float InMax);

	/** A random number in [Min, Max]. */
	static CORE_API double FRandRange(double InMin, double InMax);

	/** A random number in [Min, Max]. */
	static float RandRange(float InMin, float InMax) { return FRandRange(InMin, InMax); }

	/** A random number in [Min, Max]. */
	static double RandRange(double InMin, double InMax) { return FRandRange(InMin, InMax); }

	/** Linear equivalent of the sRGB-encoded channel value C in [0, 1]. */
	template <typename T>
	static T SRGBToLinear(T C)
	{
		return (C <= (T)0.04045) ? C / (T)12.92 : std::pow((C + (T)0.055) / (T)1.055, (T)2.4);
	}

	/** sRGB encoding of the linear channel value C in [0, 1]. */
	template <typename T>
	static T LinearToSRGB(T C)
	{
		return (C <= (T)0.0031308) ? C * (T)12.92 : (T)1.055 * std::pow(C, (T)(1.0 / 2.4)) - (T)0.055;
	}
};

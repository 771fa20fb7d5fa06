// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "Math/Color.h"
#include "Math/IntPoint.h"
#include "Math/IntVector.h"
#include "Math/Quat.h"
#include "Math/Rotator.h"
#include "Math/Transform.h"
#include "Math/UnrealMathUtility.h"
#include "Math/Vector.h"
#include "Math/Vector2D.h"
#include "Math/Vector4.h"

#include <cstddef>
#include <gtest/gtest.h>

namespace
{
	constexpr double Tolerance = 1e-9;

	void ExpectVector(const FVector& Actual, double X, double Y, double Z, double InTolerance = Tolerance)
	{
		EXPECT_NEAR(Actual.X, X, InTolerance) << ToUtf8(Actual.ToString());
		EXPECT_NEAR(Actual.Y, Y, InTolerance) << ToUtf8(Actual.ToString());
		EXPECT_NEAR(Actual.Z, Z, InTolerance) << ToUtf8(Actual.ToString());
	}

	void ExpectRotator(const FRotator& Actual, double Pitch, double Yaw, double Roll, double InTolerance = 1e-6)
	{
		EXPECT_NEAR(Actual.Pitch, Pitch, InTolerance) << ToUtf8(Actual.ToString());
		EXPECT_NEAR(Actual.Yaw, Yaw, InTolerance) << ToUtf8(Actual.ToString());
		EXPECT_NEAR(Actual.Roll, Roll, InTolerance) << ToUtf8(Actual.ToString());
	}
} // namespace

TEST(MathTest, ScalarHelpers)
{
	EXPECT_EQ(FMath::RoundToInt(2.5), 3);
	EXPECT_EQ(FMath::RoundToInt(-2.5), -2);
	EXPECT_EQ(FMath::FloorToInt(-1.5), -2);
	EXPECT_EQ(FMath::CeilToInt(1.2f), 2);
	EXPECT_EQ(FMath::TruncToInt(-1.7), -1);
	EXPECT_EQ(FMath::Clamp(5, 0, 3), 3);
	EXPECT_EQ(FMath::Clamp(-5, 0, 3), 0);
	EXPECT_EQ(FMath::Max3(1, 7, 4), 7);
	EXPECT_EQ(FMath::Min3(1.5, -7.0, 4.0), -7.0);
	EXPECT_EQ(FMath::Sign(-3.0), -1.0);
	EXPECT_EQ(FMath::Square(3), 9);
	EXPECT_TRUE(FMath::IsPowerOfTwo(64));
	EXPECT_FALSE(FMath::IsPowerOfTwo(48));
	EXPECT_EQ(FMath::DivideAndRoundUp(10, 3), 4);
	EXPECT_DOUBLE_EQ(FMath::Lerp(0.0, 10.0, 0.25), 2.5);
	EXPECT_DOUBLE_EQ(FMath::UnwindDegrees(270.0), -90.0);
	EXPECT_DOUBLE_EQ(FMath::ClampAxis(-90.0), 270.0);
	EXPECT_DOUBLE_EQ(FMath::NormalizeAxis(-180.0), 180.0);
	EXPECT_DOUBLE_EQ(FMath::ClampAngle(350.0, -10.0, 10.0), -10.0);
	EXPECT_DOUBLE_EQ(FMath::ClampAngle(30.0, -10.0, 10.0), 10.0);
	EXPECT_NEAR(FMath::DegreesToRadians(180.0), UE_DOUBLE_PI, Tolerance);
	EXPECT_NEAR(FMath::RadiansToDegrees(UE_DOUBLE_HALF_PI), 90.0, Tolerance);
	EXPECT_TRUE(FMath::IsNearlyEqual(1.0, 1.0 + 1e-9));
	EXPECT_FALSE(FMath::IsNearlyEqual(1.0, 1.001));
	EXPECT_TRUE(FMath::IsNearlyZero(1e-5f, UE_KINDA_SMALL_NUMBER));
}

TEST(MathTest, RandomNumbersStayInRangeAndRepeatAfterReseeding)
{
	FMath::RandInit(42);
	const float First = FMath::FRand();
	const int32 Second = FMath::RandRange(3, 5);
	FMath::RandInit(42);
	EXPECT_EQ(FMath::FRand(), First);
	EXPECT_EQ(FMath::RandRange(3, 5), Second);

	for (int32 Index = 0; Index < 1000; ++Index)
	{
		const float Unit = FMath::FRand();
		ASSERT_GE(Unit, 0.0f);
		ASSERT_LT(Unit, 1.0f);
		const int32 Ranged = FMath::RandRange(-2, 2);
		ASSERT_GE(Ranged, -2);
		ASSERT_LE(Ranged, 2);
		const int32 Helper = FMath::RandHelper(3);
		ASSERT_GE(Helper, 0);
		ASSERT_LE(Helper, 2);
	}
	EXPECT_EQ(FMath::RandHelper(0), 0);
}

TEST(MathTest, VectorOperations)
{
	ExpectVector(FVector(1, 0, 0) ^ FVector(0, 1, 0), 0, 0, 1);
	EXPECT_DOUBLE_EQ(FVector(1, 2, 3) | FVector(4, -5, 6), 12.0);
	EXPECT_DOUBLE_EQ(FVector(3, 4, 0).Size(), 5.0);
	EXPECT_DOUBLE_EQ(FVector(3, 4, 12).Size2D(), 5.0);
	EXPECT_DOUBLE_EQ(FVector::Dist(FVector(1, 1, 1), FVector(1, 4, 5)), 5.0);
	ExpectVector(FVector(0, 3, 4).GetSafeNormal(), 0, 0.6, 0.8);
	EXPECT_TRUE(FVector::ZeroVector.GetSafeNormal().IsZero());

	FVector Zero(0, 0, 0);
	EXPECT_FALSE(Zero.Normalize());
	FVector Long(0, 0, 10);
	EXPECT_TRUE(Long.Normalize());
	ExpectVector(Long, 0, 0, 1);

	ExpectVector(2.0 * FVector(1, -2, 3), 2, -4, 6);
	ExpectVector(FVector(1, 5, -3).ComponentMin(FVector(2, 4, -6)), 1, 4, -6);
	ExpectVector(FVector(-1, 5, -3).GetAbs(), 1, 5, 3);
	EXPECT_TRUE(FVector(1, 2, 3).Equals(FVector(1.00001, 2, 3), 1e-4));
	EXPECT_FALSE(FVector(1, 2, 3).Equals(FVector(1.1, 2, 3)));
	ExpectVector(FVector::UpVector, 0, 0, 1);
	ExpectVector(FVector::ForwardVector, 1, 0, 0);
	ExpectVector(FVector::RightVector, 0, 1, 0);

	ExpectRotator(FVector(1, 1, 0).Rotation(), 0, 45, 0);
	ExpectRotator(FVector(0, 0, 2).Rotation(), 90, 0, 0);
	ExpectRotator(FVector(-1, 0, -1).Rotation(), -45, 180, 0);
}

TEST(MathTest, VectorTextFormats)
{
	EXPECT_EQ(ToUtf8(FVector(1, 2.5, -3).ToString()), "X=1.000 Y=2.500 Z=-3.000");
	EXPECT_EQ(ToUtf8(FVector2D(1, 2).ToString()), "X=1.000 Y=2.000");
	EXPECT_EQ(ToUtf8(FVector4(1, 2, 3, 4).ToString()), "X=1.000 Y=2.000 Z=3.000 W=4.000");
	EXPECT_EQ(ToUtf8(FIntPoint(3, -4).ToString()), "X=3 Y=-4");
	EXPECT_EQ(ToUtf8(FIntVector(1, 2, 3).ToString()), "X=1 Y=2 Z=3");
	EXPECT_EQ(ToUtf8(FRotator(10, 20, 30).ToString()), "P=10.000000 Y=20.000000 R=30.000000");
	EXPECT_EQ(ToUtf8(FQuat::Identity.ToString()), "X=0.000000000 Y=0.000000000 Z=0.000000000 W=1.000000000");

	FVector Parsed(0, 0, 0);
	EXPECT_TRUE(Parsed.InitFromString(TEXT("X=1.5 Y=-2 Z=3.25")));
	ExpectVector(Parsed, 1.5, -2, 3.25);
	EXPECT_FALSE(Parsed.InitFromString(TEXT("X=7 Y=8")));
	ExpectVector(Parsed, 1.5, -2, 3.25);

	FRotator ParsedRotator;
	EXPECT_TRUE(ParsedRotator.InitFromString(FRotator(10, 20, 30).ToString()));
	ExpectRotator(ParsedRotator, 10, 20, 30);

	FIntPoint ParsedPoint;
	EXPECT_TRUE(ParsedPoint.InitFromString(TEXT("X=3 Y=-4")));
	EXPECT_EQ(ParsedPoint, FIntPoint(3, -4));
}

TEST(MathTest, TwoDimensionalTypes)
{
	EXPECT_EQ(FVector2D::ZeroVector, FVector2D(0, 0));
	EXPECT_EQ(FVector2D::UnitVector, FVector2D(1, 1));
	EXPECT_DOUBLE_EQ(FVector2D(3, 4).Size(), 5.0);
	EXPECT_DOUBLE_EQ(FVector2D(1, 0) ^ FVector2D(0, 1), 1.0);
	const FVector2D Rotated = FVector2D(1, 0).GetRotated(90.0);
	EXPECT_NEAR(Rotated.X, 0.0, Tolerance);
	EXPECT_NEAR(Rotated.Y, 1.0, Tolerance);
	EXPECT_EQ(FIntPoint(1, 2) + FIntPoint(3, 4), FIntPoint(4, 6));
	EXPECT_EQ(FIntPoint::NoneValue, FIntPoint(INDEX_NONE, INDEX_NONE));
	EXPECT_EQ(FVector2D(1.6, -1.6).IntPoint(), FIntPoint(2, -2));
}

TEST(MathTest, RotatorAnglesAndNormalization)
{
	ExpectRotator(FRotator(370, -190, 180).GetNormalized(), 10, 170, 180);
	ExpectRotator(FRotator(-10, 360, 725).Clamp(), 350, 0, 5);
	ExpectVector(FRotator(10, 20, 30).Euler(), 30, 10, 20);
	ExpectRotator(FRotator::MakeFromEuler(FVector(30, 10, 20)), 10, 20, 30);
	EXPECT_TRUE(FRotator(360, -720, 0).IsNearlyZero());
	EXPECT_TRUE(FRotator(0, 0, 0).IsZero());
	EXPECT_TRUE(FRotator(0, 180, 0).Equals(FRotator(0, -180, 0)));
	EXPECT_EQ(FRotator::ZeroRotator, FRotator(0, 0, 0));
}

TEST(MathTest, RotatorsTurnVectorsTheEngineWay)
{
	// Yaw turns forward to the right, pitch turns it up, roll lowers the right side.
	ExpectVector(FRotator(0, 90, 0).RotateVector(FVector(1, 0, 0)), 0, 1, 0);
	ExpectVector(FRotator(90, 0, 0).RotateVector(FVector(1, 0, 0)), 0, 0, 1);
	ExpectVector(FRotator(0, 0, 90).RotateVector(FVector(0, 1, 0)), 0, 0, -1);
	ExpectVector(FRotator(0, 0, 90).RotateVector(FVector(0, 0, 1)), 0, 1, 0);

	const double Half = 0.5;
	const double RootThreeHalves = 0.86602540378443865;
	ExpectVector(FRotator(30, 0, 0).Vector(), RootThreeHalves, 0, Half);
	ExpectVector(FRotator(0, 60, 45).Vector(), Half, RootThreeHalves, 0);

	const FVector V(1, 2, 3);
	const FRotator R(12, 34, 56);
	ExpectVector(R.UnrotateVector(R.RotateVector(V)), 1, 2, 3);
	ExpectVector(R.GetInverse().RotateVector(R.RotateVector(V)), 1, 2, 3, 1e-6);
}

TEST(MathTest, RotatorToQuaternionHasKnownValues)
{
	const double S = 0.70710678118654752;
	const FQuat Yaw90 = FRotator(0, 90, 0).Quaternion();
	EXPECT_NEAR(Yaw90.X, 0, Tolerance);
	EXPECT_NEAR(Yaw90.Y, 0, Tolerance);
	EXPECT_NEAR(Yaw90.Z, S, Tolerance);
	EXPECT_NEAR(Yaw90.W, S, Tolerance);

	const FQuat Pitch90 = FRotator(90, 0, 0).Quaternion();
	EXPECT_NEAR(Pitch90.Y, -S, Tolerance);
	EXPECT_NEAR(Pitch90.W, S, Tolerance);

	const FQuat Roll90 = FRotator(0, 0, 90).Quaternion();
	EXPECT_NEAR(Roll90.X, -S, Tolerance);
	EXPECT_NEAR(Roll90.W, S, Tolerance);

	EXPECT_TRUE(FRotator(0, 90, 0).Quaternion().Equals(FQuat(FVector(0, 0, 1), UE_DOUBLE_HALF_PI), 1e-12));
	EXPECT_TRUE(FRotator::ZeroRotator.Quaternion().IsIdentity());
}

TEST(MathTest, RotatorQuaternionRoundTrips)
{
	const FRotator Cases[] = {
		FRotator(10, 20, 30), FRotator(-45, 170, -100), FRotator(89, -179, 1), FRotator(0, 0, 180)};
	for (const FRotator& Case : Cases)
	{
		ExpectRotator(FQuat(Case).Rotator(), Case.Pitch, Case.Yaw, Case.Roll);
		ExpectRotator(FRotator(Case.Quaternion()), Case.Pitch, Case.Yaw, Case.Roll);
		EXPECT_TRUE(FQuat::MakeFromEuler(Case.Euler()).Equals(Case.Quaternion(), 1e-12));
	}

	// Straight up, only yaw minus roll is defined; the whole turn goes to yaw.
	ExpectRotator(FRotator(90, 30, 0).Quaternion().Rotator(), 90, 30, 0);
	ExpectRotator(FRotator(-90, -60, 0).Quaternion().Rotator(), -90, -60, 0);
	const FRotator Gimbal = FRotator(90, 30, 20).Quaternion().Rotator();
	ExpectVector(Gimbal.RotateVector(FVector(0, 1, 0)), FRotator(90, 30, 20).RotateVector(FVector(0, 1, 0)).X,
		FRotator(90, 30, 20).RotateVector(FVector(0, 1, 0)).Y, FRotator(90, 30, 20).RotateVector(FVector(0, 1, 0)).Z,
		1e-6);
}

TEST(MathTest, QuaternionProductAppliesTheRightHandSideFirst)
{
	const FQuat AboutX(FVector(1, 0, 0), UE_DOUBLE_HALF_PI);
	const FQuat AboutZ(FVector(0, 0, 1), UE_DOUBLE_HALF_PI);

	// X first: up becomes -Y; then Z: -Y becomes +X.
	ExpectVector((AboutZ * AboutX).RotateVector(FVector(0, 0, 1)), 1, 0, 0);
	ExpectVector(AboutZ.RotateVector(AboutX.RotateVector(FVector(0, 0, 1))), 1, 0, 0);
	// Z first: up stays up; then X: up becomes -Y.
	ExpectVector((AboutX * AboutZ).RotateVector(FVector(0, 0, 1)), 0, -1, 0);

	ExpectVector(AboutZ.Inverse().RotateVector(FVector(0, 1, 0)), 1, 0, 0);
	ExpectVector(AboutZ.UnrotateVector(FVector(0, 1, 0)), 1, 0, 0);
	EXPECT_TRUE((AboutZ * AboutZ.Inverse()).IsIdentity(1e-12));
	EXPECT_NEAR(AboutZ.GetAngle(), UE_DOUBLE_HALF_PI, Tolerance);
	ExpectVector(AboutZ.GetRotationAxis(), 0, 0, 1);

	const FQuat Halfway = FQuat::Slerp(FQuat::Identity, AboutZ, 0.5);
	ExpectVector(Halfway.RotateVector(FVector(1, 0, 0)), 0.70710678118654752, 0.70710678118654752, 0);

	const FQuat Between = FQuat::FindBetweenNormals(FVector(1, 0, 0), FVector(0, 0, 1));
	ExpectVector(Between.RotateVector(FVector(1, 0, 0)), 0, 0, 1);
	const FQuat Opposite = FQuat::FindBetweenNormals(FVector(1, 0, 0), FVector(-1, 0, 0));
	ExpectVector(Opposite.RotateVector(FVector(1, 0, 0)), -1, 0, 0);
}

TEST(MathTest, TransformCompositionAppliesTheLeftHandSideFirst)
{
	const FTransform Move(FVector(1, 0, 0));
	const FTransform Turn(FRotator(0, 90, 0));

	ExpectVector((Move * Turn).TransformPosition(FVector::ZeroVector), 0, 1, 0);
	ExpectVector((Turn * Move).TransformPosition(FVector::ZeroVector), 1, 0, 0);

	const FTransform Full(FRotator(0, 90, 0), FVector(10, 0, 0), FVector(2, 2, 2));
	ExpectVector(Full.TransformPosition(FVector(1, 0, 0)), 10, 2, 0);
	ExpectVector(Full.TransformVector(FVector(1, 0, 0)), 0, 2, 0);
	ExpectVector(Full.InverseTransformPosition(FVector(10, 2, 0)), 1, 0, 0);
	ExpectVector(Full.Inverse().TransformPosition(FVector(10, 2, 0)), 1, 0, 0);
	EXPECT_TRUE((Full * Full.Inverse()).Equals(FTransform::Identity, 1e-9));

	// A child's world transform is its relative transform times the parent's.
	const FTransform Parent(FRotator(0, 90, 0), FVector(100, 0, 0));
	const FTransform ChildRelative(FRotator::ZeroRotator, FVector(10, 0, 0));
	const FTransform ChildWorld = ChildRelative * Parent;
	ExpectVector(ChildWorld.GetLocation(), 100, 10, 0);
	ExpectRotator(ChildWorld.Rotator(), 0, 90, 0);
	EXPECT_TRUE(ChildWorld.GetRelativeTransform(Parent).Equals(ChildRelative, 1e-9));

	EXPECT_EQ(ToUtf8(FTransform(FRotator(10, 20, 30), FVector(1, 2, 3), FVector(4, 5, 6)).ToString()),
		"1.000000,2.000000,3.000000|10.000000,20.000000,30.000000|4.000000,5.000000,6.000000");
	ExpectVector(FTransform::Identity.GetScale3D(), 1, 1, 1);
}

TEST(MathTest, ColorLayoutAndConstants)
{
	EXPECT_EQ(offsetof(FColor, B), 0u);
	EXPECT_EQ(offsetof(FColor, G), 1u);
	EXPECT_EQ(offsetof(FColor, R), 2u);
	EXPECT_EQ(offsetof(FColor, A), 3u);
	EXPECT_EQ(FColor(0x11, 0x22, 0x33, 0x44).DWColor(), 0x44112233u);
	EXPECT_EQ(FColor(0x44112233u), FColor(0x11, 0x22, 0x33, 0x44));

	EXPECT_EQ(FColor::Red, FColor(255, 0, 0, 255));
	EXPECT_EQ(FColor::Green, FColor(0, 255, 0, 255));
	EXPECT_EQ(FColor::Blue, FColor(0, 0, 255, 255));
	EXPECT_EQ(FColor::White, FColor(255, 255, 255, 255));
	EXPECT_EQ(FColor::Black, FColor(0, 0, 0, 255));
	EXPECT_EQ(FColor::Transparent, FColor(0, 0, 0, 0));
	EXPECT_EQ(FColor::Yellow, FColor(255, 255, 0, 255));
	EXPECT_EQ(FColor::Cyan, FColor(0, 255, 255, 255));
	EXPECT_EQ(FColor::Magenta, FColor(255, 0, 255, 255));

	EXPECT_EQ(FLinearColor::White, FLinearColor(1, 1, 1, 1));
	EXPECT_EQ(FLinearColor::Gray, FLinearColor(0.5f, 0.5f, 0.5f, 1));
	EXPECT_EQ(FLinearColor::Transparent, FLinearColor(0, 0, 0, 0));
	EXPECT_EQ(FLinearColor::Yellow, FLinearColor(1, 1, 0, 1));
}

TEST(MathTest, ColorText)
{
	EXPECT_EQ(ToUtf8(FColor::Red.ToString()), "(R=255,G=0,B=0,A=255)");
	EXPECT_EQ(ToUtf8(FColor(0x11, 0x22, 0x33).ToHex()), "112233FF");
	EXPECT_EQ(FColor::FromHex(TEXT("#112233")), FColor(0x11, 0x22, 0x33, 255));
	EXPECT_EQ(FColor::FromHex(TEXT("11223344")), FColor(0x11, 0x22, 0x33, 0x44));
	EXPECT_EQ(FColor::FromHex(TEXT("F80")), FColor(255, 136, 0, 255));
	EXPECT_EQ(FColor::FromHex(TEXT("xyz")), FColor(0, 0, 0, 0));
	EXPECT_EQ(ToUtf8(FLinearColor(1, 0, 0.5f, 1).ToString()), "(R=1.000000,G=0.000000,B=0.500000,A=1.000000)");

	FColor Parsed;
	EXPECT_TRUE(Parsed.InitFromString(TEXT("(R=1,G=2,B=3,A=4)")));
	EXPECT_EQ(Parsed, FColor(1, 2, 3, 4));
	FLinearColor ParsedLinear;
	EXPECT_TRUE(ParsedLinear.InitFromString(TEXT("(R=0.25,G=0.5,B=1.0)")));
	EXPECT_EQ(ParsedLinear, FLinearColor(0.25f, 0.5f, 1.0f, 1.0f));
}

TEST(MathTest, SrgbConversionOfKnownValues)
{
	const FLinearColor MidGray(FColor(128, 128, 128, 255));
	EXPECT_NEAR(MidGray.R, 0.2158605f, 1e-6f);
	EXPECT_NEAR(MidGray.G, 0.2158605f, 1e-6f);
	EXPECT_FLOAT_EQ(MidGray.A, 1.0f);
	EXPECT_NEAR(FLinearColor(FColor(10, 0, 255, 51)).R, 0.0030352698f, 1e-7f);
	EXPECT_FLOAT_EQ(FLinearColor(FColor(10, 0, 255, 51)).B, 1.0f);
	EXPECT_FLOAT_EQ(FLinearColor(FColor(10, 0, 255, 51)).A, 0.2f);
	EXPECT_EQ(FLinearColor::FromSRGBColor(FColor(128, 128, 128)), MidGray);

	EXPECT_EQ(MidGray.ToFColor(true), FColor(128, 128, 128, 255));
	EXPECT_EQ(FLinearColor(0.5f, 0.5f, 0.5f, 1).ToFColor(false), FColor(127, 127, 127, 255));
	EXPECT_EQ(FLinearColor(0.5f, 0.5f, 0.5f, 1).ToFColor(true), FColor(188, 188, 188, 255));
	EXPECT_EQ(FLinearColor(0.5f, 0.5f, 0.5f, 1).ToFColorSRGB(), FColor(188, 188, 188, 255));
	EXPECT_EQ(FLinearColor(2, -1, 1, 1).ToFColor(false), FColor(255, 0, 255, 255));
	EXPECT_EQ(FLinearColor::White.ToFColor(true), FColor::White);
	EXPECT_EQ(FLinearColor(0.5f, 0.5f, 0.5f, 0.5f).QuantizeRound(), FColor(128, 128, 128, 128));

	const FLinearColor Hsv = FLinearColor(1, 0, 0, 1).LinearRGBToHSV();
	EXPECT_EQ(Hsv, FLinearColor(0, 1, 1, 1));
	EXPECT_EQ(FLinearColor(120, 1, 1, 1).HSVToLinearRGB(), FLinearColor(0, 1, 0, 1));
}

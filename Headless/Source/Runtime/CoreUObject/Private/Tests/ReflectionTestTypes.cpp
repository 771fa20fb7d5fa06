// Copyright Orvane. All Rights Reserved.

#include "Tests/ReflectionTestTypes.h"

UReflectionTestObject::UReflectionTestObject()
	: bBitA(0)
	, bBitB(0)
	, bBitC(0)
{
	FixedArray[0] = FixedArray[1] = FixedArray[2] = 0;
}

int32 UReflectionTestObject::AddNumbers(int32 A, int32 B)
{
	++CallCount;
	return A + B;
}

FString UReflectionTestObject::Describe(const FString& Prefix, bool bLoud) const
{
	return Prefix + (bLoud ? TEXT("!") : TEXT(".")) + FString::FromInt(IntValue);
}

void UReflectionTestObject::SplitValue(int32 Value, int32& OutHalf, FString& OutText)
{
	OutHalf = Value / 2;
	OutText = FString::Printf(TEXT("%d"), Value);
}

int32 UReflectionTestObject::Twice(int32 Value)
{
	return Value * 2;
}

int32 UReflectionTestObject::NativeEvent_Implementation(int32 Value)
{
	++CallCount;
	return Value + 100;
}

UReflectionTestOwner::UReflectionTestOwner(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	Component = CreateDefaultSubobject<UReflectionTestBase>(TEXT("Component"));
}

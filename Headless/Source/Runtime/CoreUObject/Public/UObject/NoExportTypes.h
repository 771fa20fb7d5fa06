// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Misc/FrameNumber.h"
#include "Misc/FrameRate.h"
#include "Misc/FrameTime.h"
#include "Misc/Guid.h"
#include "Misc/QualifiedFrameTime.h"
#include "Misc/Timecode.h"
#include "UObject/ObjectMacros.h"
#include "UObject/SoftObjectPath.h"

#include "NoExportTypes.generated.h"

// Reflection of core structs whose C++ definitions live in their own headers. The compiler skips this block;
// the header tool reads it and gives each struct a UScriptStruct, so members of these types are struct
// properties. A struct that writes its own text form (ExportTextItem / ImportTextItem) lists no fields; the
// others list their fields, which make up their text form "(Field=Value,...)".
#if !CPP

/** A path to an object, written to text as the path ("/Game/Maps/Main.Main", "None" when empty). */
USTRUCT(noexport)
struct FSoftObjectPath
{
};

/** A path to a class, written to text as the path ("/Game/Modes/GM.GM_C"). */
USTRUCT(noexport)
struct FSoftClassPath : public FSoftObjectPath
{
};

/** A globally unique identifier, written to text as its four components. */
USTRUCT(immutable, noexport, BlueprintType)
struct FGuid
{
	UPROPERTY()
	uint32 A;

	UPROPERTY()
	uint32 B;

	UPROPERTY()
	uint32 C;

	UPROPERTY()
	uint32 D;
};

/** A vector in 3-D space. */
USTRUCT(immutable, noexport, BlueprintType)
struct FVector
{
	UPROPERTY()
	double X;

	UPROPERTY()
	double Y;

	UPROPERTY()
	double Z;
};

/** An orientation as pitch, yaw and roll in degrees. */
USTRUCT(immutable, noexport, BlueprintType)
struct FRotator
{
	UPROPERTY()
	double Pitch;

	UPROPERTY()
	double Yaw;

	UPROPERTY()
	double Roll;
};

/** A rotation quaternion. */
USTRUCT(immutable, noexport, BlueprintType)
struct FQuat
{
	UPROPERTY()
	double X;

	UPROPERTY()
	double Y;

	UPROPERTY()
	double Z;

	UPROPERTY()
	double W;
};

/** A frame on a frame grid. */
USTRUCT(noexport, BlueprintType)
struct FFrameNumber
{
	UPROPERTY()
	int32 Value;
};

/** A frame rate as frames per Denominator seconds. */
USTRUCT(noexport, BlueprintType)
struct FFrameRate
{
	UPROPERTY()
	int32 Numerator;

	UPROPERTY()
	int32 Denominator;
};

/** A whole frame and a fraction of the next one. */
USTRUCT(noexport, BlueprintType)
struct FFrameTime
{
	UPROPERTY()
	FFrameNumber FrameNumber;

	UPROPERTY()
	float SubFrame;
};

/** A frame time with the rate of its grid. */
USTRUCT(noexport, BlueprintType)
struct FQualifiedFrameTime
{
	UPROPERTY()
	FFrameTime Time;

	UPROPERTY()
	FFrameRate Rate;
};

/** A SMPTE timecode. */
USTRUCT(noexport, BlueprintType)
struct FTimecode
{
	UPROPERTY()
	int32 Hours;

	UPROPERTY()
	int32 Minutes;

	UPROPERTY()
	int32 Seconds;

	UPROPERTY()
	int32 Frames;

	UPROPERTY()
	float Subframe;

	UPROPERTY()
	bool bDropFrameFormat;
};

#endif // !CPP

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "HAL/Platform.h"

#include <cstdint>
#include <limits>

enum
{
	INDEX_NONE = -1
};

enum EForceInit
{
	ForceInit,
	ForceInitToZero
};

enum ENoInit
{
	NoInit
};

#define MAX_uint8 ((uint8)0xff)
#define MAX_uint16 ((uint16)0xffff)
#define MAX_uint32 ((uint32)0xffffffff)
#define MAX_int8 ((int8)0x7f)
#define MAX_int16 ((int16)0x7fff)
#define MAX_int32 ((int32)0x7fffffff)
#define MIN_int32 ((int32)0x80000000)
#define MAX_int64 ((int64)0x7fffffffffffffff)
#define MIN_int64 ((int64)0x8000000000000000)
#define MAX_uint64 ((uint64)0xffffffffffffffff)
#define MAX_flt (3.402823466e+38F)
#define MAX_dbl (1.7976931348623158e+308)

#define UE_NONCOPYABLE(TypeName)                   \
	TypeName(TypeName&&) = delete;                 \
	TypeName(const TypeName&) = delete;            \
	TypeName& operator=(const TypeName&) = delete; \
	TypeName& operator=(TypeName&&) = delete;

#define UE_ARRAY_COUNT(Array) (sizeof(Array) / sizeof((Array)[0]))
#define UE_PTRDIFF_TO_INT32(Diff) ((int32)(Diff))

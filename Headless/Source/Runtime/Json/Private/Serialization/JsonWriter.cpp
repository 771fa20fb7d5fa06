// Copyright Orvane. All Rights Reserved.

#include "Serialization/JsonWriter.h"

#include "HAL/UnrealMemory.h"

namespace UE::Json::Private
{
	void FJsonStringArchive::Serialize(void* Data, int64 Num)
	{
		// The writer hands over whole TCHARs.
		check(Num % static_cast<int64>(sizeof(TCHAR)) == 0);
		const int32 Count = static_cast<int32>(Num / static_cast<int64>(sizeof(TCHAR)));
		if (Count > 0)
		{
			const int32 Start = Characters.AddUninitialized(Count);
			FMemory::Memcpy(Characters.GetData() + Start, Data, static_cast<SIZE_T>(Count) * sizeof(TCHAR));
		}
	}
} // namespace UE::Json::Private

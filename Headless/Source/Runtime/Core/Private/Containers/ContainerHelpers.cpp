// Copyright Orvane. All Rights Reserved.

#include "Containers/ContainerHelpers.h"

#include "Misc/AssertionMacros.h"

#include <cstdio>

namespace
{
	// Containers sit below strings, so the message is formatted here without FString.
	[[noreturn]] void FailWithMessage(const ANSICHAR* Expr, const char* Message, const ANSICHAR* File, int32 Line)
	{
		TCHAR Wide[256] = {};
		for (int32 Index = 0; Index < 255 && Message[Index] != '\0'; ++Index)
		{
			Wide[Index] = static_cast<TCHAR>(static_cast<unsigned char>(Message[Index]));
		}
		FDebug::AssertFailed(Expr, File, Line, Wide);
	}
} // namespace

namespace UE::Core::Private
{
	void OnInvalidIndex(int64 Index, int64 Num, const ANSICHAR* File, int32 Line)
	{
		char Message[128];
		std::snprintf(Message, sizeof(Message), "Array index out of bounds: %lld into an array of size %lld",
			static_cast<long long>(Index), static_cast<long long>(Num));
		FailWithMessage("(Index >= 0) & (Index < ArrayNum)", Message, File, Line);
	}

	void OnInvalidArrayNum(int64 NewNum, const ANSICHAR* File, int32 Line)
	{
		char Message[128];
		std::snprintf(Message, sizeof(Message), "Trying to resize TArray to an invalid size of %lld",
			static_cast<long long>(NewNum));
		FailWithMessage("NewNum >= 0", Message, File, Line);
	}

	void OnContainerChangedDuringIteration(const ANSICHAR* File, int32 Line)
	{
		FailWithMessage("CurrentNum == InitialNum", "Container has changed during ranged-for iteration!", File, Line);
	}
} // namespace UE::Core::Private

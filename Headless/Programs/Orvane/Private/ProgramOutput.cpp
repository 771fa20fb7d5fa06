// Copyright Orvane. All Rights Reserved.

#include "ProgramOutput.h"

#include "Containers/StringConv.h"

#include <cstdio>

namespace ProgramOutput
{
	void Line(const FString& Text)
	{
		std::fputs(TCHAR_TO_UTF8(*Text), stdout);
		std::fputc('\n', stdout);
		std::fflush(stdout);
	}

	void Error(const FString& Text)
	{
		std::fflush(stdout);
		std::fprintf(stderr, "orvane: %s\n", TCHAR_TO_UTF8(*Text));
		std::fflush(stderr);
	}
} // namespace ProgramOutput

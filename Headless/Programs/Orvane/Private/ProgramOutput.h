// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** The program's own lines on standard output and standard error, apart from the engine log. */
namespace ProgramOutput
{
	void Line(const FString& Text);
	void Error(const FString& Text);
} // namespace ProgramOutput

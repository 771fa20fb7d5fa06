// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"
#include "Internationalization/Text.h"
#include "UObject/NameTypes.h"

#include <ostream>
#include <string>

/** The string as UTF-8, for printing and for comparing with narrow literals in tests. */
inline std::string ToUtf8(const TCHAR* Str)
{
	const FTCHARToUTF8 Converted(Str);
	return std::string(reinterpret_cast<const char*>(Converted.Get()), static_cast<size_t>(Converted.Length()));
}

inline std::string ToUtf8(const FString& Str)
{
	return ToUtf8(*Str);
}

// GoogleTest finds these through argument-dependent lookup and uses them in failure messages.

inline void PrintTo(const FString& Str, std::ostream* Os)
{
	*Os << "FString(\"" << ToUtf8(Str) << "\")";
}

inline void PrintTo(const FName& Name, std::ostream* Os)
{
	*Os << "FName(\"" << ToUtf8(Name.ToString()) << "\")";
}

inline void PrintTo(const FText& Text, std::ostream* Os)
{
	*Os << "FText(\"" << ToUtf8(Text.ToString()) << "\")";
}

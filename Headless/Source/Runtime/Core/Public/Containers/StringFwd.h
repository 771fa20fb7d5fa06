// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class FString;

template <typename CharType>
class TStringView;

using FStringView = TStringView<TCHAR>;
using FAnsiStringView = TStringView<ANSICHAR>;
using FWideStringView = TStringView<WIDECHAR>;
using FUtf8StringView = TStringView<UTF8CHAR>;

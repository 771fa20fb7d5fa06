// Copyright Orvane. All Rights Reserved.
//
// Forced into every file of the fuzz build (see Scripts/Fuzz.sh). clang 14 lacks __builtin_source_location, so
// the standard library's <source_location> declares nothing there and the automation test headers would not
// compile. This declares the same class on top of the older builtins that clang 14 does have; with a newer
// clang, or with GCC, it declares nothing and the standard header is used.
#pragma once

#if defined(__clang__) && !__has_builtin(__builtin_source_location)

namespace std
{
	struct source_location
	{
		static constexpr source_location current(const char* InFile = __builtin_FILE(),
			const char* InFunction = __builtin_FUNCTION(), unsigned InLine = __builtin_LINE(),
			unsigned InColumn = __builtin_COLUMN()) noexcept
		{
			source_location Location;
			Location.File = InFile;
			Location.Function = InFunction;
			Location.Line = InLine;
			Location.Column = InColumn;
			return Location;
		}

		constexpr const char* file_name() const noexcept { return File; }
		constexpr const char* function_name() const noexcept { return Function; }
		constexpr unsigned line() const noexcept { return Line; }
		constexpr unsigned column() const noexcept { return Column; }

	private:
		const char* File = "";
		const char* Function = "";
		unsigned Line = 0;
		unsigned Column = 0;
	};
} // namespace std

#endif

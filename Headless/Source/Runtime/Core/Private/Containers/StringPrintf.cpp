// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Containers/UnrealString.h"

#include <cstdio>

namespace
{
	using UE::Core::Private::FPrintfArg;

	/** One parsed conversion specification: %[flags][width][.precision][length]conversion. */
	struct FFormatSpec
	{
		bool bLeftAlign = false;
		bool bPlusSign = false;
		bool bSpaceSign = false;
		bool bZeroPad = false;
		bool bAlternate = false;
		int32 Width = 0;
		int32 Precision = -1;

		/** Size in bytes the length modifier gives integers: 1 (hh), 2 (h), 4 (none) or 8 (l, ll, j, z, t). */
		int32 IntegerSize = 4;
		bool bNarrowString = false;
		TCHAR Conversion = 0;
	};

	/** Walks the format and the arguments together, appending the output to Result. */
	class FPrintfFormatter
	{
	public:
		FPrintfFormatter(const TCHAR* InFormat, const FPrintfArg* InArgs, int32 InNumArgs)
			: Format(InFormat)
			, Args(InArgs)
			, NumArgs(InNumArgs)
		{
		}

		FString Run()
		{
			checkf(Format != nullptr, TEXT("Printf was given a null format string."));
			for (const TCHAR* Cursor = Format; *Cursor;)
			{
				if (*Cursor != TEXT('%'))
				{
					const TCHAR* RunStart = Cursor;
					while (*Cursor && *Cursor != TEXT('%'))
					{
						++Cursor;
					}
					Result.AppendChars(RunStart, static_cast<int32>(Cursor - RunStart));
					continue;
				}
				const TCHAR* SpecStart = Cursor++;
				if (*Cursor == TEXT('%'))
				{
					Result.AppendChar(TEXT('%'));
					++Cursor;
					continue;
				}
				FFormatSpec Spec;
				Cursor = ParseSpec(Cursor, Spec);
				SpecText = FString(static_cast<int32>(Cursor - SpecStart), SpecStart);
				FormatOne(Spec);
			}
			checkf(NextArg == NumArgs, TEXT("Printf format \"%s\" uses %i argument(s) but %i were passed."), Format,
				NextArg, NumArgs);
			return MoveTemp(Result);
		}

	private:
		const TCHAR* ParseSpec(const TCHAR* Cursor, FFormatSpec& Spec)
		{
			for (;; ++Cursor)
			{
				if (*Cursor == TEXT('-'))
				{
					Spec.bLeftAlign = true;
				}
				else if (*Cursor == TEXT('+'))
				{
					Spec.bPlusSign = true;
				}
				else if (*Cursor == TEXT(' '))
				{
					Spec.bSpaceSign = true;
				}
				else if (*Cursor == TEXT('0'))
				{
					Spec.bZeroPad = true;
				}
				else if (*Cursor == TEXT('#'))
				{
					Spec.bAlternate = true;
				}
				else
				{
					break;
				}
			}
			if (*Cursor == TEXT('*'))
			{
				++Cursor;
				Spec.Width = static_cast<int32>(TakeArg(TEXT('*')).Signed);
				if (Spec.Width < 0)
				{
					Spec.bLeftAlign = true;
					Spec.Width = -Spec.Width;
				}
			}
			else
			{
				for (; FChar::IsDigit(*Cursor); ++Cursor)
				{
					Spec.Width = Spec.Width * 10 + FChar::ConvertCharDigitToInt(*Cursor);
				}
			}
			if (*Cursor == TEXT('.'))
			{
				++Cursor;
				Spec.Precision = 0;
				if (*Cursor == TEXT('*'))
				{
					++Cursor;
					const int32 Precision = static_cast<int32>(TakeArg(TEXT('*')).Signed);
					Spec.Precision = Precision < 0 ? -1 : Precision;
				}
				else
				{
					for (; FChar::IsDigit(*Cursor); ++Cursor)
					{
						Spec.Precision = Spec.Precision * 10 + FChar::ConvertCharDigitToInt(*Cursor);
					}
				}
			}
			if (Cursor[0] == TEXT('h') && Cursor[1] == TEXT('h'))
			{
				Spec.IntegerSize = 1;
				Cursor += 2;
			}
			else if (Cursor[0] == TEXT('h'))
			{
				Spec.IntegerSize = 2;
				Spec.bNarrowString = true;
				++Cursor;
			}
			else if (Cursor[0] == TEXT('l') && Cursor[1] == TEXT('l'))
			{
				Spec.IntegerSize = 8;
				Cursor += 2;
			}
			else if (Cursor[0] == TEXT('l') || Cursor[0] == TEXT('j') || Cursor[0] == TEXT('z') ||
					 Cursor[0] == TEXT('t') || Cursor[0] == TEXT('L'))
			{
				Spec.IntegerSize = 8;
				++Cursor;
			}
			else if (Cursor[0] == TEXT('I') && Cursor[1] == TEXT('6') && Cursor[2] == TEXT('4'))
			{
				Spec.IntegerSize = 8;
				Cursor += 3;
			}
			Spec.Conversion = *Cursor;
			if (*Cursor)
			{
				++Cursor;
			}
			return Cursor;
		}

		const FPrintfArg& TakeArg(TCHAR Conversion)
		{
			checkf(NextArg < NumArgs, TEXT("Printf format \"%s\": '%%%c' has no argument (only %i passed)."), Format,
				Conversion, NumArgs);
			return Args[NextArg++];
		}

		[[noreturn]] void Mismatch(const FPrintfArg& Arg)
		{
			const FString TypeName(Arg.TypeName);
			checkf(false, TEXT("Printf format \"%s\": specifier '%s' does not accept %s (argument %i)."), Format,
				*SpecText, *TypeName, NextArg);
			checkNoEntry();
		}

		void FormatOne(const FFormatSpec& Spec)
		{
			switch (Spec.Conversion)
			{
				case TEXT('d'):
				case TEXT('i'):
				case TEXT('u'):
				case TEXT('x'):
				case TEXT('X'):
				case TEXT('o'):
					FormatInteger(Spec, TakeArg(Spec.Conversion));
					break;
				case TEXT('c'):
					FormatChar(Spec, TakeArg(Spec.Conversion));
					break;
				case TEXT('s'):
				case TEXT('S'):
					FormatString(Spec, TakeArg(Spec.Conversion));
					break;
				case TEXT('f'):
				case TEXT('F'):
				case TEXT('e'):
				case TEXT('E'):
				case TEXT('g'):
				case TEXT('G'):
				case TEXT('a'):
				case TEXT('A'):
					FormatDouble(Spec, TakeArg(Spec.Conversion));
					break;
				case TEXT('p'):
					FormatPointer(Spec, TakeArg(Spec.Conversion));
					break;
				default:
					checkf(false, TEXT("Printf format \"%s\": unsupported specifier '%s'."), Format, *SpecText);
			}
		}

		/** Builds the narrow printf specification for snprintf from the parsed flags. */
		void BuildNarrowSpec(
			const FFormatSpec& Spec, const char* Length, char Conversion, char* Out, bool bWithPrecision)
		{
			char* Write = Out;
			*Write++ = '%';
			if (Spec.bLeftAlign)
			{
				*Write++ = '-';
			}
			if (Spec.bPlusSign)
			{
				*Write++ = '+';
			}
			if (Spec.bSpaceSign)
			{
				*Write++ = ' ';
			}
			if (Spec.bZeroPad)
			{
				*Write++ = '0';
			}
			if (Spec.bAlternate)
			{
				*Write++ = '#';
			}
			*Write++ = '*';
			if (bWithPrecision)
			{
				*Write++ = '.';
				*Write++ = '*';
			}
			while (*Length)
			{
				*Write++ = *Length++;
			}
			*Write++ = Conversion;
			*Write = 0;
		}

		template <typename ValueType>
		void AppendNarrow(const char* NarrowSpec, int32 Width, int32 Precision, ValueType Value)
		{
			char Inline[128];
			const int Needed = std::snprintf(Inline, sizeof(Inline), NarrowSpec, Width, Precision, Value);
			checkf(Needed >= 0, TEXT("Printf could not format specifier '%s'."), *SpecText);
			if (Needed < static_cast<int>(sizeof(Inline)))
			{
				Result.AppendChars(Inline, Needed);
				return;
			}
			TArray<char> Heap;
			Heap.AddUninitialized(Needed + 1);
			std::snprintf(Heap.GetData(), Needed + 1, NarrowSpec, Width, Precision, Value);
			Result.AppendChars(Heap.GetData(), Needed);
		}

		void FormatInteger(const FFormatSpec& Spec, const FPrintfArg& Arg)
		{
			if (Arg.Kind != FPrintfArg::EKind::Signed && Arg.Kind != FPrintfArg::EKind::Unsigned)
			{
				Mismatch(Arg);
			}
			const bool bSigned = Spec.Conversion == TEXT('d') || Spec.Conversion == TEXT('i');
			// The value is cut to the size the length modifier names, as a C varargs call would read it.
			const uint64 Raw = Arg.Unsigned;
			char NarrowSpec[32];
			const char Conversion = static_cast<char>(Spec.Conversion);
			const bool bHasPrecision = Spec.Precision >= 0;
			BuildNarrowSpec(Spec, "ll", Conversion, NarrowSpec, bHasPrecision);
			const int32 Precision = bHasPrecision ? Spec.Precision : 0;
			if (bSigned)
			{
				long long Value = 0;
				switch (Spec.IntegerSize)
				{
					case 1:
						Value = static_cast<int8>(Raw);
						break;
					case 2:
						Value = static_cast<int16>(Raw);
						break;
					case 4:
						Value = static_cast<int32>(Raw);
						break;
					default:
						Value = static_cast<long long>(Raw);
				}
				AppendInteger(NarrowSpec, Spec.Width, Precision, bHasPrecision, Value);
			}
			else
			{
				unsigned long long Value = 0;
				switch (Spec.IntegerSize)
				{
					case 1:
						Value = static_cast<uint8>(Raw);
						break;
					case 2:
						Value = static_cast<uint16>(Raw);
						break;
					case 4:
						Value = static_cast<uint32>(Raw);
						break;
					default:
						Value = static_cast<unsigned long long>(Raw);
				}
				AppendInteger(NarrowSpec, Spec.Width, Precision, bHasPrecision, Value);
			}
		}

		template <typename ValueType>
		void AppendInteger(const char* NarrowSpec, int32 Width, int32 Precision, bool bHasPrecision, ValueType Value)
		{
			if (bHasPrecision)
			{
				AppendNarrow(NarrowSpec, Width, Precision, Value);
				return;
			}
			char Inline[128];
			const int Needed = std::snprintf(Inline, sizeof(Inline), NarrowSpec, Width, Value);
			if (Needed >= 0 && Needed < static_cast<int>(sizeof(Inline)))
			{
				Result.AppendChars(Inline, Needed);
				return;
			}
			// Only an enormous width gets here; pad by hand around the bare number.
			checkf(Needed >= 0, TEXT("Printf could not format specifier '%s'."), *SpecText);
			TArray<char> Heap;
			Heap.AddUninitialized(Needed + 1);
			std::snprintf(Heap.GetData(), Needed + 1, NarrowSpec, Width, Value);
			Result.AppendChars(Heap.GetData(), Needed);
		}

		void FormatDouble(const FFormatSpec& Spec, const FPrintfArg& Arg)
		{
			if (Arg.Kind != FPrintfArg::EKind::Double)
			{
				Mismatch(Arg);
			}
			char NarrowSpec[32];
			BuildNarrowSpec(Spec, "", static_cast<char>(Spec.Conversion), NarrowSpec, true);
			AppendNarrow(NarrowSpec, Spec.Width, Spec.Precision >= 0 ? Spec.Precision : 6, Arg.Double);
		}

		void AppendPadded(const TCHAR* Text, int32 Length, const FFormatSpec& Spec)
		{
			const int32 Padding = Spec.Width > Length ? Spec.Width - Length : 0;
			if (!Spec.bLeftAlign && Padding > 0)
			{
				Result += FString::ChrN(Padding, TEXT(' '));
			}
			Result.AppendChars(Text, Length);
			if (Spec.bLeftAlign && Padding > 0)
			{
				Result += FString::ChrN(Padding, TEXT(' '));
			}
		}

		void FormatString(const FFormatSpec& Spec, const FPrintfArg& Arg)
		{
			if (Arg.Kind == FPrintfArg::EKind::Pointer && Arg.Pointer == nullptr)
			{
				AppendPadded(TEXT("(null)"), 6, Spec);
				return;
			}
			const bool bNarrowExpected = Spec.bNarrowString;
			if (Arg.Kind == FPrintfArg::EKind::String && !bNarrowExpected)
			{
				const TCHAR* Text = static_cast<const TCHAR*>(Arg.Pointer);
				if (Text == nullptr)
				{
					AppendPadded(TEXT("(null)"), 6, Spec);
					return;
				}
				int32 Length = FCString::Strlen(Text);
				if (Spec.Precision >= 0 && Spec.Precision < Length)
				{
					Length = Spec.Precision;
				}
				AppendPadded(Text, Length, Spec);
				return;
			}
			if (Arg.Kind == FPrintfArg::EKind::AnsiString && bNarrowExpected)
			{
				const ANSICHAR* Narrow = static_cast<const ANSICHAR*>(Arg.Pointer);
				const FString Text(Narrow ? Narrow : "(null)");
				const int32 Length = Spec.Precision >= 0 && Spec.Precision < Text.Len() ? Spec.Precision : Text.Len();
				AppendPadded(*Text, Length, Spec);
				return;
			}
			Mismatch(Arg);
		}

		void FormatChar(const FFormatSpec& Spec, const FPrintfArg& Arg)
		{
			if (Arg.Kind != FPrintfArg::EKind::Signed && Arg.Kind != FPrintfArg::EKind::Unsigned)
			{
				Mismatch(Arg);
			}
			const uint32 CodePoint = static_cast<uint32>(Arg.Unsigned);
			if (CodePoint > 0xFFFF)
			{
				const UTF32CHAR Wide[] = {CodePoint, 0};
				const FUTF32ToTCHAR Converted(Wide);
				AppendPadded(Converted.Get(), Converted.Length(), Spec);
				return;
			}
			const TCHAR Char = static_cast<TCHAR>(CodePoint);
			AppendPadded(&Char, 1, Spec);
		}

		void FormatPointer(const FFormatSpec& Spec, const FPrintfArg& Arg)
		{
			if (Arg.Kind != FPrintfArg::EKind::Pointer && Arg.Kind != FPrintfArg::EKind::String &&
				Arg.Kind != FPrintfArg::EKind::AnsiString)
			{
				Mismatch(Arg);
			}
			char Narrow[40];
			const int Written = std::snprintf(Narrow, sizeof(Narrow), "0x%llx",
				static_cast<unsigned long long>(reinterpret_cast<UPTRINT>(Arg.Pointer)));
			const FString Text(Written, Narrow);
			AppendPadded(*Text, Text.Len(), Spec);
		}

		const TCHAR* Format;
		const FPrintfArg* Args;
		int32 NumArgs;
		int32 NextArg = 0;
		FString SpecText;
		FString Result;
	};
} // namespace

FString FString::PrintfImpl(const TCHAR* Fmt, const UE::Core::Private::FPrintfArg* Args, int32 NumArgs)
{
	return FPrintfFormatter(Fmt, Args, NumArgs).Run();
}

// Copyright Orvane. All Rights Reserved.

#include "PropertyText.h"

#include "Misc/OutputDevice.h"
#include "ObjectInternals.h"

namespace UE::CoreUObject::Private
{
	void AppendQuoted(FString& Out, const FString& Value)
	{
		Out += TEXT('"');
		for (TCHAR Char : Value)
		{
			switch (Char)
			{
				case TEXT('\\'):
					Out += TEXT("\\\\");
					break;
				case TEXT('"'):
					Out += TEXT("\\\"");
					break;
				case TEXT('\n'):
					Out += TEXT("\\n");
					break;
				case TEXT('\r'):
					Out += TEXT("\\r");
					break;
				case TEXT('\t'):
					Out += TEXT("\\t");
					break;
				default:
					Out += Char;
					break;
			}
		}
		Out += TEXT('"');
	}

	const TCHAR* ReadQuoted(const TCHAR* Buffer, FString& Out)
	{
		check(*Buffer == TEXT('"'));
		++Buffer;
		Out.Reset();
		while (*Buffer && *Buffer != TEXT('"'))
		{
			if (*Buffer == TEXT('\\') && Buffer[1])
			{
				++Buffer;
				switch (*Buffer)
				{
					case TEXT('n'):
						Out += TEXT('\n');
						break;
					case TEXT('r'):
						Out += TEXT('\r');
						break;
					case TEXT('t'):
						Out += TEXT('\t');
						break;
					default:
						Out += *Buffer;
						break;
				}
				++Buffer;
				continue;
			}
			Out += *Buffer++;
		}
		if (*Buffer != TEXT('"'))
		{
			return nullptr;
		}
		return Buffer + 1;
	}

	const TCHAR* SkipDelimitedValue(const TCHAR* Buffer)
	{
		int32 Depth = 0;
		while (*Buffer)
		{
			if (*Buffer == TEXT('"'))
			{
				FString Ignored;
				const TCHAR* End = ReadQuoted(Buffer, Ignored);
				if (!End)
				{
					return nullptr;
				}
				Buffer = End;
				continue;
			}
			if (*Buffer == TEXT('('))
			{
				++Depth;
			}
			else if (*Buffer == TEXT(')'))
			{
				if (Depth == 0)
				{
					return Buffer;
				}
				--Depth;
			}
			else if (*Buffer == TEXT(',') && Depth == 0)
			{
				return Buffer;
			}
			++Buffer;
		}
		return Buffer;
	}

	void ReportImportError(FOutputDevice* ErrorText, const FString& Message)
	{
		if (ErrorText)
		{
			ErrorText->Log(*Message);
		}
		else
		{
			UE_LOG(LogUObjectGlobals, Warning, TEXT("%s"), *Message);
		}
	}
} // namespace UE::CoreUObject::Private

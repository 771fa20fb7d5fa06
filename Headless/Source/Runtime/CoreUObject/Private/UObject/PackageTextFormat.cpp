// Copyright Orvane. All Rights Reserved.

#include "UObject/PackageTextFormat.h"

#include "Misc/CString.h"
#include "Misc/Char.h"
#include "Templates/Tuple.h"

namespace UE::PackageText
{
	namespace
	{
		/** Whether a header attribute value has to be quoted to survive being read back. */
		bool NeedsQuotes(const FString& Value)
		{
			if (Value.IsEmpty())
			{
				return true;
			}
			for (const TCHAR Char : Value)
			{
				if (FChar::IsWhitespace(Char) || Char == TEXT('"') || Char == TEXT('=') || Char == TEXT('\\'))
				{
					return true;
				}
			}
			return false;
		}

		void AppendAttribute(FString& Out, const TCHAR* Key, const FString& Value)
		{
			Out += TEXT(" ");
			Out += Key;
			Out += TEXT("=");
			if (!NeedsQuotes(Value))
			{
				Out += Value;
				return;
			}
			Out += TEXT("\"");
			for (const TCHAR Char : Value)
			{
				if (Char == TEXT('"') || Char == TEXT('\\'))
				{
					Out += TEXT("\\");
				}
				Out.AppendChar(Char);
			}
			Out += TEXT("\"");
		}

		/**
		 * A value that contains a line break cannot stay on its line: such values are written after
		 * "%=" with '%', CR and LF percent-encoded.
		 */
		bool NeedsEncoding(const FString& Value)
		{
			return Value.Contains(TEXT("\n")) || Value.Contains(TEXT("\r"));
		}

		FString EncodeValue(const FString& Value)
		{
			FString Result;
			for (const TCHAR Char : Value)
			{
				if (Char == TEXT('%'))
				{
					Result += TEXT("%25");
				}
				else if (Char == TEXT('\r'))
				{
					Result += TEXT("%0D");
				}
				else if (Char == TEXT('\n'))
				{
					Result += TEXT("%0A");
				}
				else
				{
					Result.AppendChar(Char);
				}
			}
			return Result;
		}

		bool DecodeValue(const FString& Encoded, FString& OutValue)
		{
			OutValue.Reset();
			for (int32 Index = 0; Index < Encoded.Len(); ++Index)
			{
				if (Encoded[Index] != TEXT('%'))
				{
					OutValue.AppendChar(Encoded[Index]);
					continue;
				}
				const FString Code = Encoded.Mid(Index + 1, 2);
				if (Code == TEXT("25"))
				{
					OutValue.AppendChar(TEXT('%'));
				}
				else if (Code == TEXT("0D"))
				{
					OutValue.AppendChar(TEXT('\r'));
				}
				else if (Code == TEXT("0A"))
				{
					OutValue.AppendChar(TEXT('\n'));
				}
				else
				{
					return false;
				}
				Index += 2;
			}
			return true;
		}

		/** Reads "Key=Value" attributes of a header line (values may be quoted). */
		bool ReadAttributes(const FString& Text, TArray<TPair<FString, FString>>& OutAttributes, FString& OutError)
		{
			int32 Index = 0;
			const int32 Len = Text.Len();
			while (Index < Len)
			{
				while (Index < Len && FChar::IsWhitespace(Text[Index]))
				{
					++Index;
				}
				if (Index >= Len)
				{
					break;
				}
				const int32 KeyStart = Index;
				while (Index < Len && Text[Index] != TEXT('=') && !FChar::IsWhitespace(Text[Index]))
				{
					++Index;
				}
				if (Index >= Len || Text[Index] != TEXT('='))
				{
					OutError = FString::Printf(TEXT("expected Key=Value, found '%s'"), *Text.RightChop(KeyStart));
					return false;
				}
				const FString Key = Text.Mid(KeyStart, Index - KeyStart);
				++Index;
				FString Value;
				if (Index < Len && Text[Index] == TEXT('"'))
				{
					++Index;
					while (Index < Len && Text[Index] != TEXT('"'))
					{
						if (Text[Index] == TEXT('\\') && Index + 1 < Len)
						{
							++Index;
						}
						Value.AppendChar(Text[Index++]);
					}
					if (Index >= Len)
					{
						OutError = FString::Printf(TEXT("the quoted value of %s is not closed"), *Key);
						return false;
					}
					++Index;
				}
				else
				{
					while (Index < Len && !FChar::IsWhitespace(Text[Index]))
					{
						Value.AppendChar(Text[Index++]);
					}
				}
				OutAttributes.Add(TPair<FString, FString>(Key, Value));
			}
			return true;
		}

		/** Reads a property line "Name=Value", "Name(Index)=Value" or "Name%=Encoded". */
		bool ReadPropertyLine(const FString& Text, int32 LineNumber, FPropertyLine& OutLine, FString& OutError)
		{
			int32 Equals = INDEX_NONE;
			if (!Text.FindChar(TEXT('='), Equals) || Equals == 0)
			{
				OutError = TEXT("expected Name=Value");
				return false;
			}
			FString Name = Text.Left(Equals);
			const bool bEncoded = Name.EndsWith(TEXT("%"));
			if (bEncoded)
			{
				Name.LeftChopInline(1);
			}
			OutLine.ArrayIndex = 0;
			int32 Paren = INDEX_NONE;
			if (Name.FindChar(TEXT('('), Paren))
			{
				if (!Name.EndsWith(TEXT(")")))
				{
					OutError = FString::Printf(TEXT("'%s' is not Name or Name(Index)"), *Name);
					return false;
				}
				const FString IndexText = Name.Mid(Paren + 1, Name.Len() - Paren - 2);
				if (IndexText.IsEmpty() || !IndexText.IsNumeric() || IndexText.Contains(TEXT(".")) ||
					IndexText.StartsWith(TEXT("-")))
				{
					OutError = FString::Printf(TEXT("'%s' is not an array index"), *IndexText);
					return false;
				}
				OutLine.ArrayIndex = FCString::Atoi(*IndexText);
				Name.LeftInline(Paren);
			}
			if (Name.IsEmpty())
			{
				OutError = TEXT("the property name is empty");
				return false;
			}
			OutLine.Name = Name;
			OutLine.Line = LineNumber;
			const FString RawValue = Text.RightChop(Equals + 1);
			if (!bEncoded)
			{
				OutLine.Value = RawValue;
				return true;
			}
			if (!DecodeValue(RawValue, OutLine.Value))
			{
				OutError = TEXT("the encoded value has an unknown %-sequence");
				return false;
			}
			return true;
		}
	} // namespace

	FString WritePackageText(const FPackageFile& Package)
	{
		FString Out;
		Out += FString::Printf(TEXT("%s %d\n"), FileMagic, Package.Version);
		Out += TEXT("Package=") + Package.PackageName + TEXT("\n");
		for (const FObjectBlock& Object : Package.Objects)
		{
			Out += TEXT("\nBegin Object");
			AppendAttribute(Out, TEXT("Name"), Object.Name);
			AppendAttribute(Out, TEXT("Class"), Object.Class);
			if (!Object.Outer.IsEmpty())
			{
				AppendAttribute(Out, TEXT("Outer"), Object.Outer);
			}
			if (!Object.Flags.IsEmpty())
			{
				AppendAttribute(Out, TEXT("Flags"), FString::Join(Object.Flags, TEXT("|")));
			}
			Out += TEXT("\n");
			for (const FPropertyLine& Property : Object.Properties)
			{
				Out += TEXT("\t");
				Out += Property.Name;
				if (Property.ArrayIndex != 0)
				{
					Out += FString::Printf(TEXT("(%d)"), Property.ArrayIndex);
				}
				if (NeedsEncoding(Property.Value))
				{
					Out += TEXT("%=") + EncodeValue(Property.Value);
				}
				else
				{
					Out += TEXT("=") + Property.Value;
				}
				Out += TEXT("\n");
			}
			Out += TEXT("End Object\n");
		}
		return Out;
	}

	bool ReadPackageText(const FString& Text, FPackageFile& OutPackage, FString& OutError)
	{
		OutPackage = FPackageFile();
		TArray<FString> Lines;
		Text.ParseIntoArrayLines(Lines, false);

		auto Fail = [&OutError](int32 LineNumber, const FString& Message)
		{
			OutError = FString::Printf(TEXT("line %d: %s"), LineNumber, *Message);
			return false;
		};

		bool bHaveMagic = false;
		FObjectBlock* Current = nullptr;
		for (int32 Index = 0; Index < Lines.Num(); ++Index)
		{
			const int32 LineNumber = Index + 1;
			const FString Line = Lines[Index].TrimStartAndEnd();
			if (Line.IsEmpty() || Line.StartsWith(TEXT(";")))
			{
				continue;
			}
			if (!bHaveMagic)
			{
				TArray<FString> Words;
				Line.ParseIntoArrayWS(Words);
				if (Words.Num() != 2 || !Words[0].Equals(FileMagic, ESearchCase::CaseSensitive) ||
					!Words[1].IsNumeric())
				{
					return Fail(LineNumber,
						FString::Printf(TEXT("not a headless package file (expected '%s <version>')"), FileMagic));
				}
				OutPackage.Version = FCString::Atoi(*Words[1]);
				if (OutPackage.Version < 1 || OutPackage.Version > CurrentVersion)
				{
					return Fail(LineNumber,
						FString::Printf(TEXT("format version %d is not supported (this engine reads 1 to %d)"),
							OutPackage.Version, CurrentVersion));
				}
				bHaveMagic = true;
				continue;
			}
			if (Current == nullptr)
			{
				if (Line.StartsWith(TEXT("Package="), ESearchCase::CaseSensitive))
				{
					OutPackage.PackageName = Line.RightChop(8);
					continue;
				}
				if (!Line.StartsWith(TEXT("Begin Object"), ESearchCase::CaseSensitive))
				{
					return Fail(LineNumber, FString::Printf(TEXT("expected 'Begin Object', found '%s'"), *Line));
				}
				TArray<TPair<FString, FString>> Attributes;
				FString AttributeError;
				if (!ReadAttributes(Line.RightChop(12), Attributes, AttributeError))
				{
					return Fail(LineNumber, AttributeError);
				}
				Current = &OutPackage.Objects.AddDefaulted_GetRef();
				Current->Line = LineNumber;
				for (const TPair<FString, FString>& Attribute : Attributes)
				{
					if (Attribute.Key == TEXT("Name"))
					{
						Current->Name = Attribute.Value;
					}
					else if (Attribute.Key == TEXT("Class"))
					{
						Current->Class = Attribute.Value;
					}
					else if (Attribute.Key == TEXT("Outer"))
					{
						Current->Outer = Attribute.Value;
					}
					else if (Attribute.Key == TEXT("Flags"))
					{
						Attribute.Value.ParseIntoArray(Current->Flags, TEXT("|"));
					}
					else
					{
						return Fail(LineNumber, FString::Printf(TEXT("unknown object attribute '%s'"), *Attribute.Key));
					}
				}
				if (Current->Name.IsEmpty() || Current->Class.IsEmpty())
				{
					return Fail(LineNumber, TEXT("an object needs a Name and a Class"));
				}
				continue;
			}
			if (Line == TEXT("End Object"))
			{
				Current = nullptr;
				continue;
			}
			// Property values keep their own leading and trailing spaces: only the indentation goes.
			FString PropertyText = Lines[Index];
			PropertyText.TrimStartInline();
			FPropertyLine Property;
			FString PropertyError;
			if (!ReadPropertyLine(PropertyText, LineNumber, Property, PropertyError))
			{
				return Fail(LineNumber, PropertyError);
			}
			Current->Properties.Add(MoveTemp(Property));
		}
		if (!bHaveMagic)
		{
			return Fail(1, FString::Printf(TEXT("the file is empty (expected '%s <version>')"), FileMagic));
		}
		if (Current != nullptr)
		{
			return Fail(Current->Line, FString::Printf(TEXT("object '%s' has no 'End Object'"), *Current->Name));
		}
		return true;
	}
} // namespace UE::PackageText

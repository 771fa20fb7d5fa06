// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "JsonGlobals.h"
#include "Policies/PrettyJsonPrintPolicy.h"
#include "Serialization/Archive.h"
#include "Serialization/JsonTypes.h"
#include "Templates/SharedPointer.h"

#include <cmath>

/**
 * Writes Json text into an archive, as characters of CharType laid out by PrintPolicy. Inside an object every
 * value needs an identifier (the overloads that take one); inside an array and at the top level none may be
 * given. Non-finite numbers, which Json cannot express, are written as null with a warning.
 */
template <class CharType = TCHAR, class PrintPolicy = TPrettyJsonPrintPolicy<CharType>>
class TJsonWriter
{
public:
	/** A writer into Stream, which must outlive it. */
	static TSharedRef<TJsonWriter> Create(FArchive* const Stream, int32 InitialIndentLevel = 0)
	{
		return MakeShareable(new TJsonWriter<CharType, PrintPolicy>(Stream, InitialIndentLevel));
	}

	virtual ~TJsonWriter() = default;

	int32 GetIndentLevel() const { return IndentLevel; }

	/** True where a value may be written without an identifier: at the top level, in an array, after an identifier. */
	bool CanWriteValueWithoutIdentifier() const
	{
		return Stack.Num() == 0 || Stack.Last() == EJson::Array || PreviousTokenWritten == EJsonToken::Identifier;
	}

	void WriteObjectStart()
	{
		WriteValuePrefix();
		PrintPolicy::WriteChar(Stream, CharType('{'));
		Open(EJson::Object, EJsonToken::CurlyOpen);
	}

	void WriteObjectStart(FStringView Identifier)
	{
		WriteIdentifierPrefix(Identifier);
		WriteObjectStart();
	}

	void WriteObjectEnd() { Close(EJson::Object, CharType('}'), EJsonToken::CurlyOpen, EJsonToken::CurlyClose); }

	void WriteArrayStart()
	{
		WriteValuePrefix();
		PrintPolicy::WriteChar(Stream, CharType('['));
		Open(EJson::Array, EJsonToken::SquareOpen);
	}

	void WriteArrayStart(FStringView Identifier)
	{
		WriteIdentifierPrefix(Identifier);
		WriteArrayStart();
	}

	void WriteArrayEnd() { Close(EJson::Array, CharType(']'), EJsonToken::SquareOpen, EJsonToken::SquareClose); }

	void WriteValue(bool Value)
	{
		WriteValuePrefix();
		WriteAscii(Value ? "true" : "false");
		PreviousTokenWritten = Value ? EJsonToken::True : EJsonToken::False;
	}

	void WriteValue(float Value)
	{
		if (!std::isfinite(Value))
		{
			WriteNonFinite();
			return;
		}
		WriteValuePrefix();
		PrintPolicy::WriteFloat(Stream, Value);
		PreviousTokenWritten = EJsonToken::Number;
	}

	void WriteValue(double Value)
	{
		if (!std::isfinite(Value))
		{
			WriteNonFinite();
			return;
		}
		WriteValuePrefix();
		PrintPolicy::WriteDouble(Stream, Value);
		PreviousTokenWritten = EJsonToken::Number;
	}

	void WriteValue(int32 Value) { WriteInteger(static_cast<int64>(Value)); }
	void WriteValue(int64 Value) { WriteInteger(Value); }
	void WriteValue(uint32 Value) { WriteUnsigned(static_cast<uint64>(Value)); }
	void WriteValue(uint64 Value) { WriteUnsigned(Value); }

	void WriteValue(FStringView Value)
	{
		WriteValuePrefix();
		WriteQuotedString(Value);
		PreviousTokenWritten = EJsonToken::String;
	}

	void WriteValue(const FString& Value) { WriteValue(FStringView(Value)); }
	void WriteValue(const TCHAR* Value) { WriteValue(FStringView(Value)); }

	/** Writes a field of the object being written. */
	template <class FValue>
	void WriteValue(FStringView Identifier, FValue&& Value)
	{
		WriteIdentifierPrefix(Identifier);
		WriteValue(Forward<FValue>(Value));
	}

	void WriteNull()
	{
		WriteValuePrefix();
		WriteAscii("null");
		PreviousTokenWritten = EJsonToken::Null;
	}

	void WriteNull(FStringView Identifier)
	{
		WriteIdentifierPrefix(Identifier);
		WriteNull();
	}

	/** Writes Value, which must already be valid Json text, as it is. */
	void WriteRawJSONValue(FStringView Value)
	{
		WriteValuePrefix();
		PrintPolicy::WriteString(Stream, Value);
		PreviousTokenWritten = EJsonToken::String;
	}

	void WriteRawJSONValue(FStringView Identifier, FStringView Value)
	{
		WriteIdentifierPrefix(Identifier);
		WriteRawJSONValue(Value);
	}

	/** Writes the name of the next field of the object being written; the value follows with an overload without
	 * identifier. */
	void WriteIdentifierPrefix(FStringView Identifier)
	{
		checkf(Stack.Num() > 0 && Stack.Last() == EJson::Object && PreviousTokenWritten != EJsonToken::Identifier,
			TEXT("An identifier can only start a field of an object."));
		if (PreviousTokenWritten != EJsonToken::CurlyOpen)
		{
			PrintPolicy::WriteChar(Stream, CharType(','));
		}
		PrintPolicy::WriteLineTerminator(Stream);
		PrintPolicy::WriteTabs(Stream, IndentLevel);
		WriteQuotedString(Identifier);
		PrintPolicy::WriteChar(Stream, CharType(':'));
		PrintPolicy::WriteSpace(Stream);
		PreviousTokenWritten = EJsonToken::Identifier;
	}

	/** Finishes writing; false when containers are left open or the archive failed. */
	virtual bool Close() { return Stack.Num() == 0 && !Stream->IsError(); }

protected:
	TJsonWriter(FArchive* const InStream, int32 InitialIndentLevel)
		: Stream(InStream)
		, IndentLevel(InitialIndentLevel)
		, InitialIndent(InitialIndentLevel)
	{
	}

	/** Separates a value from the one before it and checks that it may stand where it is written. */
	void WriteValuePrefix()
	{
		if (PreviousTokenWritten == EJsonToken::Identifier)
		{
			return;
		}
		checkf(Stack.Num() == 0 || Stack.Last() == EJson::Array, TEXT("A value inside an object needs an identifier."));
		checkf(Stack.Num() > 0 || PreviousTokenWritten == EJsonToken::None,
			TEXT("Json text holds a single top-level value."));
		if (Stack.Num() > 0)
		{
			if (PreviousTokenWritten != EJsonToken::SquareOpen)
			{
				PrintPolicy::WriteChar(Stream, CharType(','));
			}
			PrintPolicy::WriteLineTerminator(Stream);
			PrintPolicy::WriteTabs(Stream, IndentLevel);
		}
	}

	void Open(EJson Kind, EJsonToken Token)
	{
		Stack.Add(Kind);
		++IndentLevel;
		PreviousTokenWritten = Token;
	}

	void Close(EJson Kind, CharType EndChar, EJsonToken OpenToken, EJsonToken CloseToken)
	{
		checkf(Stack.Num() > 0 && Stack.Last() == Kind && PreviousTokenWritten != EJsonToken::Identifier,
			TEXT("Closing a container that is not the one being written."));
		Stack.Pop();
		--IndentLevel;
		if (PreviousTokenWritten != OpenToken)
		{
			PrintPolicy::WriteLineTerminator(Stream);
			PrintPolicy::WriteTabs(Stream, IndentLevel);
		}
		PrintPolicy::WriteChar(Stream, EndChar);
		PreviousTokenWritten = CloseToken;
	}

	void WriteAscii(const ANSICHAR* Text)
	{
		for (; *Text; ++Text)
		{
			PrintPolicy::WriteChar(Stream, static_cast<CharType>(*Text));
		}
	}

	void WriteInteger(int64 Value)
	{
		WriteValuePrefix();
		WriteAscii(TCHAR_TO_UTF8(*LexToString(Value)));
		PreviousTokenWritten = EJsonToken::Number;
	}

	void WriteUnsigned(uint64 Value)
	{
		WriteValuePrefix();
		WriteAscii(TCHAR_TO_UTF8(*LexToString(Value)));
		PreviousTokenWritten = EJsonToken::Number;
	}

	void WriteNonFinite()
	{
		UE_LOG(LogJson, Warning, TEXT("Json cannot hold an infinite or NaN number; writing null instead."));
		WriteNull();
	}

	/** Writes String between quotes, escaping quotes, backslashes and control characters. */
	void WriteQuotedString(FStringView String)
	{
		PrintPolicy::WriteChar(Stream, CharType('"'));
		const TCHAR* Run = String.GetData();
		const TCHAR* const End = Run + String.Len();
		for (const TCHAR* Char = Run; Char < End; ++Char)
		{
			const TCHAR Code = *Char;
			if (Code >= 0x20 && Code != TCHAR('"') && Code != TCHAR('\\'))
			{
				continue;
			}
			PrintPolicy::WriteString(Stream, FStringView(Run, static_cast<int32>(Char - Run)));
			Run = Char + 1;
			switch (Code)
			{
				case TCHAR('"'):
					WriteAscii("\\\"");
					break;
				case TCHAR('\\'):
					WriteAscii("\\\\");
					break;
				case TCHAR('\n'):
					WriteAscii("\\n");
					break;
				case TCHAR('\r'):
					WriteAscii("\\r");
					break;
				case TCHAR('\t'):
					WriteAscii("\\t");
					break;
				case TCHAR('\b'):
					WriteAscii("\\b");
					break;
				case TCHAR('\f'):
					WriteAscii("\\f");
					break;
				default:
				{
					static constexpr ANSICHAR Hex[] = "0123456789abcdef";
					const ANSICHAR Escape[] = {'\\', 'u', '0', '0', Hex[(Code >> 4) & 0xF], Hex[Code & 0xF], 0};
					WriteAscii(Escape);
					break;
				}
			}
		}
		PrintPolicy::WriteString(Stream, FStringView(Run, static_cast<int32>(End - Run)));
		PrintPolicy::WriteChar(Stream, CharType('"'));
	}

	FArchive* Stream;
	TArray<EJson> Stack;
	EJsonToken PreviousTokenWritten = EJsonToken::None;
	int32 IndentLevel;
	int32 InitialIndent;
};

namespace UE::Json::Private
{
	/** The characters a string writer has written so far. */
	class JSON_API FJsonStringArchive : public FArchive
	{
	public:
		FJsonStringArchive() { SetIsSaving(true); }

		virtual void Serialize(void* Data, int64 Num) override;
		virtual int64 Tell() override { return Characters.Num() * static_cast<int64>(sizeof(TCHAR)); }
		virtual int64 TotalSize() override { return Tell(); }
		virtual FString GetArchiveName() const override { return TEXT("FJsonStringArchive"); }

		TArray<TCHAR> Characters;
	};

	/** Holds the archive of a string writer, as a base so that it exists before the writer that uses it. */
	struct FJsonStringWriterStorage
	{
		FJsonStringArchive Archive;
	};
} // namespace UE::Json::Private

/** Writes Json into a string; the string receives the text when the writer is closed. */
template <class PrintPolicy = TPrettyJsonPrintPolicy<TCHAR>>
class TJsonStringWriter
	: private UE::Json::Private::FJsonStringWriterStorage
	, public TJsonWriter<TCHAR, PrintPolicy>
{
public:
	static TSharedRef<TJsonStringWriter> Create(FString* const InStream, int32 InitialIndent = 0)
	{
		return MakeShareable(new TJsonStringWriter(InStream, InitialIndent));
	}

	virtual ~TJsonStringWriter() = default;

	/** Replaces the string's content with the text written. */
	virtual bool Close() override
	{
		*OutString = FString(this->Archive.Characters.Num(), this->Archive.Characters.GetData());
		return TJsonWriter<TCHAR, PrintPolicy>::Close();
	}

protected:
	TJsonStringWriter(FString* const InOutString, int32 InitialIndent)
		: TJsonWriter<TCHAR, PrintPolicy>(&this->Archive, InitialIndent)
		, OutString(InOutString)
	{
	}

	FString* OutString;
};

/** Makes Json writers. */
template <class CharType = TCHAR, class PrintPolicy = TPrettyJsonPrintPolicy<CharType>>
class TJsonWriterFactory
{
public:
	static TSharedRef<TJsonWriter<CharType, PrintPolicy>> Create(FArchive* const Stream, int32 InitialIndent = 0)
	{
		return TJsonWriter<CharType, PrintPolicy>::Create(Stream, InitialIndent);
	}

	static TSharedRef<TJsonWriter<TCHAR, PrintPolicy>> Create(FString* const Stream, int32 InitialIndent = 0)
	{
		return TJsonStringWriter<PrintPolicy>::Create(Stream, InitialIndent);
	}
};

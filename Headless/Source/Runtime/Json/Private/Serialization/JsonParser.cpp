// Copyright Orvane. All Rights Reserved.

#include "Containers/StringConv.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "JsonGlobals.h"
#include "JsonNumbers.h"
#include "Serialization/Archive.h"
#include "Serialization/JsonReader.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <cstring>
#include <string>

namespace UE::Json::Private
{
	namespace
	{
		/** Converts text the parser has validated as UTF-8; ASCII, the usual case, is widened without decoding. */
		FString Utf8ToString(const std::string& Text)
		{
			const int32 Length = static_cast<int32>(Text.size());
			FString Result;
			if (Length == 0)
			{
				return Result;
			}
			const unsigned char* Bytes = reinterpret_cast<const unsigned char*>(Text.data());
			TArray<TCHAR>& Chars = Result.GetCharArray();
			Chars.SetNumUninitialized(Length + 1);
			TCHAR* Out = Chars.GetData();
			for (int32 Index = 0; Index < Length; ++Index)
			{
				if (Bytes[Index] >= 0x80)
				{
					return FString(Length, reinterpret_cast<const UTF8CHAR*>(Text.data()));
				}
				Out[Index] = static_cast<TCHAR>(Bytes[Index]);
			}
			Out[Length] = 0;
			return Result;
		}

		/**
		 * The offset of the bracket that opens one level more than MaxDepth, found by walking the text outside
		 * strings; only called after the parse stopped there, so the text before it is well-formed.
		 */
		int64 FindTooDeepOffset(const char* Text, int64 Length)
		{
			int32 Depth = 0;
			bool bInString = false;
			for (int64 Index = 0; Index < Length; ++Index)
			{
				const char Char = Text[Index];
				if (bInString)
				{
					if (Char == '\\')
					{
						++Index;
					}
					else if (Char == '"')
					{
						bInString = false;
					}
				}
				else if (Char == '"')
				{
					bInString = true;
				}
				else if (Char == '[' || Char == '{')
				{
					if (++Depth > FJsonParser::MaxDepth)
					{
						return Index;
					}
				}
				else if (Char == ']' || Char == '}')
				{
					--Depth;
				}
			}
			return Length;
		}

		FString IntegerText(int64 Value)
		{
			char Buffer[24];
			const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
			return FString(static_cast<int32>(Result.ptr - Buffer), Buffer);
		}

		FString IntegerText(uint64 Value)
		{
			char Buffer[24];
			const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
			return FString(static_cast<int32>(Result.ptr - Buffer), Buffer);
		}

		const TCHAR* KindName(EJson Kind)
		{
			switch (Kind)
			{
				case EJson::Null:
					return TEXT("null");
				case EJson::String:
					return TEXT("a string");
				case EJson::Number:
					return TEXT("a number");
				case EJson::Boolean:
					return TEXT("a boolean");
				case EJson::Array:
					return TEXT("an array");
				case EJson::Object:
					return TEXT("an object");
				case EJson::None:
				default:
					return TEXT("nothing");
			}
		}

		/** One notation of the text, as ReadNext hands it out. */
		struct FToken
		{
			EJsonNotation Notation = EJsonNotation::Null;
			FString Identifier;
			/** The string of a String, the text of a Number. */
			FString Text;
			double Number = 0.0;
			bool bBoolean = false;
		};

		/** What the parse callbacks of both modes share: the nesting depth and the error, if any. */
		struct FSaxBase
		{
			int32 Depth = 0;
			bool bTooDeep = false;
			bool bParseError = false;
			int64 ErrorOffset = 0;
			FString ErrorReason;

			bool Enter()
			{
				if (Depth >= FJsonParser::MaxDepth)
				{
					bTooDeep = true;
					ErrorReason = FString::Printf(TEXT("containers nest deeper than %d levels"), FJsonParser::MaxDepth);
					return false;
				}
				++Depth;
				return true;
			}

			bool parse_error(std::size_t Position, const std::string& LastToken, const nlohmann::json::exception& Error)
			{
				bParseError = true;
				ErrorOffset = Position > 0 ? static_cast<int64>(Position) - 1 : 0;
				// The library's message reads "[json.exception...] parse error at line L, column C: <reason>".
				const std::string What = Error.what();
				const size_t ReasonStart = What.find(": ");
				ErrorReason = Utf8ToString(ReasonStart == std::string::npos ? What : What.substr(ReasonStart + 2));
				return false;
			}

			bool binary(nlohmann::json::binary_t&) { return false; }
		};

		/** Builds the tree of values straight from the parse callbacks. */
		struct FTreeBuilder : FSaxBase
		{
			struct FFrame
			{
				TSharedPtr<FJsonObject> Object;
				TArray<TSharedPtr<FJsonValue>> Array;
				FString Key;
			};

			TArray<FFrame> Stack;
			TSharedPtr<FJsonValue> Root;
			bool bNumbersAsStrings = false;

			bool Add(TSharedPtr<FJsonValue>&& Value)
			{
				if (Stack.Num() == 0)
				{
					Root = MoveTemp(Value);
					return true;
				}
				FFrame& Top = Stack.Last();
				if (Top.Object.IsValid())
				{
					Top.Object->Values.Add(MoveTemp(Top.Key), MoveTemp(Value));
				}
				else
				{
					Top.Array.Add(MoveTemp(Value));
				}
				return true;
			}

			bool null() { return Add(MakeShared<FJsonValueNull>()); }
			bool boolean(bool bValue) { return Add(MakeShared<FJsonValueBoolean>(bValue)); }

			bool number_integer(int64 Value)
			{
				// Numbers written with a minus sign come here, the others to number_unsigned: a zero here is "-0".
				if (Value == 0)
				{
					return bNumbersAsStrings ? Add(MakeShared<FJsonValueNumberString>(FString(TEXT("-0"))))
											 : Add(MakeShared<FJsonValueNumber>(-0.0));
				}
				return bNumbersAsStrings ? Add(MakeShared<FJsonValueNumberString>(IntegerText(Value)))
										 : Add(MakeShared<FJsonValueNumber>(static_cast<double>(Value)));
			}

			bool number_unsigned(uint64 Value)
			{
				return bNumbersAsStrings ? Add(MakeShared<FJsonValueNumberString>(IntegerText(Value)))
										 : Add(MakeShared<FJsonValueNumber>(static_cast<double>(Value)));
			}

			bool number_float(double Value, const std::string& Text)
			{
				return bNumbersAsStrings ? Add(MakeShared<FJsonValueNumberString>(Utf8ToString(Text)))
										 : Add(MakeShared<FJsonValueNumber>(Value));
			}

			bool string(std::string& Value) { return Add(MakeShared<FJsonValueString>(Utf8ToString(Value))); }

			bool start_object(std::size_t)
			{
				if (!Enter())
				{
					return false;
				}
				FFrame& Frame = Stack.AddDefaulted_GetRef();
				Frame.Object = MakeShared<FJsonObject>();
				return true;
			}

			bool key(std::string& Key)
			{
				Stack.Last().Key = Utf8ToString(Key);
				return true;
			}

			bool end_object()
			{
				--Depth;
				TSharedPtr<FJsonObject> Object = MoveTemp(Stack.Last().Object);
				Stack.Pop();
				return Add(MakeShared<FJsonValueObject>(MoveTemp(Object)));
			}

			bool start_array(std::size_t)
			{
				if (!Enter())
				{
					return false;
				}
				Stack.AddDefaulted();
				return true;
			}

			bool end_array()
			{
				--Depth;
				TArray<TSharedPtr<FJsonValue>> Array = MoveTemp(Stack.Last().Array);
				Stack.Pop();
				return Add(MakeShared<FJsonValueArray>(MoveTemp(Array)));
			}
		};

		/** Records the notations ReadNext hands out. */
		struct FTokenRecorder : FSaxBase
		{
			TArray<FToken>* Tokens = nullptr;
			/** Whether each open container is an object, innermost last. */
			TArray<bool> InObject;
			FString PendingKey;

			FToken& Add(EJsonNotation Notation)
			{
				FToken& Token = Tokens->AddDefaulted_GetRef();
				Token.Notation = Notation;
				if (InObject.Num() > 0 && InObject.Last() && Notation != EJsonNotation::ObjectEnd &&
					Notation != EJsonNotation::ArrayEnd)
				{
					Token.Identifier = MoveTemp(PendingKey);
					PendingKey.Reset();
				}
				return Token;
			}

			bool null()
			{
				Add(EJsonNotation::Null);
				return true;
			}

			bool boolean(bool bValue)
			{
				Add(EJsonNotation::Boolean).bBoolean = bValue;
				return true;
			}

			bool AddNumber(double Value, FString&& Text)
			{
				FToken& Token = Add(EJsonNotation::Number);
				Token.Number = Value;
				Token.Text = MoveTemp(Text);
				return true;
			}

			bool number_integer(int64 Value)
			{
				// As in the tree builder: only a number written "-0" gives a signed zero.
				if (Value == 0)
				{
					return AddNumber(-0.0, FString(TEXT("-0")));
				}
				return AddNumber(static_cast<double>(Value), IntegerText(Value));
			}

			bool number_unsigned(uint64 Value) { return AddNumber(static_cast<double>(Value), IntegerText(Value)); }

			bool number_float(double Value, const std::string& Text) { return AddNumber(Value, Utf8ToString(Text)); }

			bool string(std::string& Value)
			{
				Add(EJsonNotation::String).Text = Utf8ToString(Value);
				return true;
			}

			bool start_object(std::size_t)
			{
				if (!Enter())
				{
					return false;
				}
				Add(EJsonNotation::ObjectStart);
				InObject.Add(true);
				return true;
			}

			bool key(std::string& Key)
			{
				PendingKey = Utf8ToString(Key);
				return true;
			}

			bool end_object()
			{
				--Depth;
				InObject.Pop();
				Add(EJsonNotation::ObjectEnd);
				return true;
			}

			bool start_array(std::size_t)
			{
				if (!Enter())
				{
					return false;
				}
				Add(EJsonNotation::ArrayStart);
				InObject.Add(false);
				return true;
			}

			bool end_array()
			{
				--Depth;
				InObject.Pop();
				Add(EJsonNotation::ArrayEnd);
				return true;
			}
		};
	} // namespace

	struct FJsonParser::FState
	{
		/** The UTF-8 text: borrowed from the reader's source, or held in OwnedText. */
		const char* Text = nullptr;
		int64 Length = 0;
		std::string OwnedText;

		/** An archive still to be read, and the size of its characters. */
		FArchive* Stream = nullptr;
		int32 StreamCharSize = 1;

		/** Set once a whole-value parse has run: the text holds a single value. */
		bool bValueParsed = false;

		/** The notations of the text, once ReadNext asked for them. */
		bool bTokenized = false;
		TArray<FToken> Tokens;
		int32 NextToken = 0;
		const FToken* Current = nullptr;

		/** An error met while tokenizing, reported once the notations before it are read. */
		FString PendingError;
		uint32 PendingLine = 0;
		uint32 PendingCharacter = 0;

		FString ErrorMessage;
		uint32 ErrorLine = 0;
		uint32 ErrorCharacter = 0;

		void LoadStream()
		{
			if (Stream == nullptr)
			{
				return;
			}
			FArchive& Ar = *Stream;
			Stream = nullptr;
			TArray<uint8> Bytes;
			const int64 Size = Ar.TotalSize();
			if (Size != INDEX_NONE)
			{
				const int64 Remaining = Size - Ar.Tell();
				if (Remaining > 0 && Remaining < MAX_int32)
				{
					Bytes.SetNumUninitialized(static_cast<int32>(Remaining));
					Ar.Serialize(Bytes.GetData(), Remaining);
				}
			}
			else
			{
				// Without a size, read until the archive fails; the failed read is not part of the text.
				while (Bytes.Num() < MAX_int32 - 1)
				{
					uint8 Byte = 0;
					Ar.Serialize(&Byte, 1);
					if (Ar.IsError())
					{
						Ar.ClearError();
						break;
					}
					Bytes.Add(Byte);
				}
			}
			if (StreamCharSize == 2)
			{
				const FTCHARToUTF8 Converted(reinterpret_cast<const TCHAR*>(Bytes.GetData()), Bytes.Num() / 2);
				OwnedText.assign(
					reinterpret_cast<const char*>(Converted.Get()), static_cast<size_t>(Converted.Length()));
			}
			else
			{
				OwnedText.assign(reinterpret_cast<const char*>(Bytes.GetData()), static_cast<size_t>(Bytes.Num()));
			}
			Text = OwnedText.data();
			Length = static_cast<int64>(OwnedText.size());
		}

		/** Works out the line and character (both from 1) of a byte offset into the text. */
		void Locate(int64 Offset, uint32& OutLine, uint32& OutCharacter) const
		{
			Offset = Offset < 0 ? 0 : (Offset > Length ? Length : Offset);
			uint32 Line = 1;
			uint32 Character = 1;
			for (int64 Index = 0; Index < Offset; ++Index)
			{
				const uint8 Byte = static_cast<uint8>(Text[Index]);
				if (Byte == '\n')
				{
					++Line;
					Character = 1;
				}
				else if ((Byte & 0xC0) != 0x80)
				{
					// Count characters, not the continuation bytes of UTF-8 sequences.
					++Character;
				}
			}
			OutLine = Line;
			OutCharacter = Character;
		}

		void SetError(const FString& Reason, uint32 Line, uint32 Character)
		{
			ErrorLine = Line;
			ErrorCharacter = Character;
			ErrorMessage = FString::Printf(TEXT("Json error at line %u, character %u: %s"), Line, Character, *Reason);
		}

		void SetError(const FString& Reason, int64 Offset)
		{
			uint32 Line = 0;
			uint32 Character = 0;
			Locate(Offset, Line, Character);
			SetError(Reason, Line, Character);
		}

		template <typename SaxType>
		bool Run(SaxType& Sax)
		{
			LoadStream();
			const char* const Begin = Text ? Text : "";
			const char* const End = Begin + Length;
			// The parser takes a NUL character for the end of the text and would ignore whatever follows it;
			// Json has no place for one outside a string's escapes, so it is an error wherever it appears.
			if (const void* Nul = Length > 0 ? std::memchr(Begin, 0, static_cast<size_t>(Length)) : nullptr)
			{
				Sax.bParseError = true;
				Sax.ErrorOffset = static_cast<const char*>(Nul) - Begin;
				Sax.ErrorReason = TEXT("unexpected NUL character");
				return false;
			}
			bool bOk = false;
			try
			{
				bOk = nlohmann::json::sax_parse(Begin, End, &Sax, nlohmann::json::input_format_t::json, true, false);
			}
			catch (const std::exception& Exception)
			{
				// The parser reports through parse_error; anything thrown besides (memory) is reported the same way.
				Sax.bParseError = true;
				Sax.ErrorOffset = 0;
				Sax.ErrorReason = Utf8ToString(Exception.what());
				bOk = false;
			}
			if (Sax.bTooDeep)
			{
				Sax.ErrorOffset = FindTooDeepOffset(Begin, Length);
			}
			return bOk && !Sax.bTooDeep && !Sax.bParseError;
		}

		bool ParseTree(TSharedPtr<FJsonValue>& OutValue, bool bNumbersAsStrings)
		{
			FTreeBuilder Builder;
			Builder.bNumbersAsStrings = bNumbersAsStrings;
			Builder.Stack.Reserve(16);
			if (!Run(Builder))
			{
				SetError(Builder.ErrorReason.IsEmpty() ? FString(TEXT("invalid Json")) : Builder.ErrorReason,
					Builder.ErrorOffset);
				return false;
			}
			OutValue = MoveTemp(Builder.Root);
			return OutValue.IsValid();
		}

		void Tokenize()
		{
			bTokenized = true;
			FTokenRecorder Recorder;
			Recorder.Tokens = &Tokens;
			if (!Run(Recorder))
			{
				uint32 Line = 0;
				uint32 Character = 0;
				Locate(Recorder.ErrorOffset, Line, Character);
				PendingError = Recorder.ErrorReason.IsEmpty() ? FString(TEXT("invalid Json")) : Recorder.ErrorReason;
				PendingLine = Line;
				PendingCharacter = Character;
			}
		}

		bool NextToken_(EJsonNotation& Notation)
		{
			if (!bTokenized)
			{
				if (bValueParsed)
				{
					return false;
				}
				Tokenize();
			}
			if (!ErrorMessage.IsEmpty())
			{
				Notation = EJsonNotation::Error;
				return false;
			}
			if (NextToken < Tokens.Num())
			{
				Current = &Tokens[NextToken++];
				Notation = Current->Notation;
				return true;
			}
			Current = nullptr;
			if (!PendingError.IsEmpty())
			{
				SetError(PendingError, PendingLine, PendingCharacter);
				Notation = EJsonNotation::Error;
			}
			return false;
		}

		/** Builds the next whole value out of the notations ReadNext has not handed out yet. */
		bool TreeFromTokens(TSharedPtr<FJsonValue>& OutValue, bool bNumbersAsStrings)
		{
			struct FFrame
			{
				TSharedPtr<FJsonObject> Object;
				TArray<TSharedPtr<FJsonValue>> Array;
			};
			TArray<FFrame> Stack;
			EJsonNotation Notation = EJsonNotation::Null;
			while (NextToken_(Notation))
			{
				TSharedPtr<FJsonValue> Value;
				switch (Notation)
				{
					case EJsonNotation::ObjectStart:
						Stack.AddDefaulted_GetRef().Object = MakeShared<FJsonObject>();
						continue;
					case EJsonNotation::ArrayStart:
						Stack.AddDefaulted();
						continue;
					case EJsonNotation::ObjectEnd:
					case EJsonNotation::ArrayEnd:
						if (Stack.Num() == 0)
						{
							SetError(TEXT("the value to read ends before it starts"), 0, 0);
							return false;
						}
						if (Stack.Last().Object.IsValid())
						{
							Value = MakeShared<FJsonValueObject>(MoveTemp(Stack.Last().Object));
						}
						else
						{
							Value = MakeShared<FJsonValueArray>(MoveTemp(Stack.Last().Array));
						}
						Stack.Pop();
						break;
					case EJsonNotation::Boolean:
						Value = MakeShared<FJsonValueBoolean>(Current->bBoolean);
						break;
					case EJsonNotation::String:
						Value = MakeShared<FJsonValueString>(Current->Text);
						break;
					case EJsonNotation::Number:
						if (bNumbersAsStrings)
						{
							Value = MakeShared<FJsonValueNumberString>(Current->Text);
						}
						else
						{
							Value = MakeShared<FJsonValueNumber>(Current->Number);
						}
						break;
					case EJsonNotation::Null:
					case EJsonNotation::Error:
					default:
						Value = MakeShared<FJsonValueNull>();
						break;
				}
				if (Stack.Num() == 0)
				{
					OutValue = MoveTemp(Value);
					return true;
				}
				FFrame& Top = Stack.Last();
				if (Top.Object.IsValid())
				{
					// The identifier of a closed container is the one its start notation carried.
					Top.Object->Values.Add(Notation == EJsonNotation::ObjectEnd || Notation == EJsonNotation::ArrayEnd
											   ? PendingIdentifierOf()
											   : Current->Identifier,
						MoveTemp(Value));
				}
				else
				{
					Top.Array.Add(MoveTemp(Value));
				}
			}
			if (ErrorMessage.IsEmpty())
			{
				SetError(TEXT("the text ends before a whole value"), 0, 0);
			}
			return false;
		}

		/** The identifier carried by the start notation of the container that just closed. */
		FString PendingIdentifierOf() const
		{
			// Walk back from the closing notation to its matching start.
			int32 Level = 0;
			for (int32 Index = NextToken - 1; Index >= 0; --Index)
			{
				const EJsonNotation Notation = Tokens[Index].Notation;
				if (Notation == EJsonNotation::ObjectEnd || Notation == EJsonNotation::ArrayEnd)
				{
					++Level;
				}
				else if (Notation == EJsonNotation::ObjectStart || Notation == EJsonNotation::ArrayStart)
				{
					if (--Level == 0)
					{
						return Tokens[Index].Identifier;
					}
				}
			}
			return FString();
		}
	};

	FJsonParser::FJsonParser()
		: State(new FState())
	{
	}

	FJsonParser::~FJsonParser()
	{
		delete State;
	}

	void FJsonParser::SetSource(const UTF8CHAR* Data, int64 Length)
	{
		State->Text = reinterpret_cast<const char*>(Data);
		State->Length = Data ? Length : 0;
	}

	void FJsonParser::SetSource(const ANSICHAR* Data, int64 Length)
	{
		State->Text = Data;
		State->Length = Data ? Length : 0;
	}

	void FJsonParser::SetSource(const UTF16CHAR* Data, int64 Length)
	{
		if (Data == nullptr || Length <= 0)
		{
			State->Text = nullptr;
			State->Length = 0;
			return;
		}
		check(Length <= MAX_int32);
		const FTCHARToUTF8 Converted(reinterpret_cast<const TCHAR*>(Data), static_cast<int32>(Length));
		State->OwnedText.assign(
			reinterpret_cast<const char*>(Converted.Get()), static_cast<size_t>(Converted.Length()));
		State->Text = State->OwnedText.data();
		State->Length = static_cast<int64>(State->OwnedText.size());
	}

	void FJsonParser::SetSource(FArchive* Stream, int32 CharSize)
	{
		State->Stream = Stream;
		State->StreamCharSize = CharSize;
	}

	bool FJsonParser::ParseValue(TSharedPtr<FJsonValue>& OutValue, EJson RequiredType, bool bStoreNumbersAsStrings)
	{
		if (!State->ErrorMessage.IsEmpty())
		{
			return false;
		}
		TSharedPtr<FJsonValue> Value;
		if (State->bTokenized)
		{
			if (!State->TreeFromTokens(Value, bStoreNumbersAsStrings))
			{
				return false;
			}
		}
		else
		{
			if (State->bValueParsed)
			{
				State->SetError(TEXT("the text holds a single value, which was already read"), 0, 0);
				return false;
			}
			State->bValueParsed = true;
			if (!State->ParseTree(Value, bStoreNumbersAsStrings))
			{
				return false;
			}
		}
		if (RequiredType != EJson::None && Value->Type != RequiredType)
		{
			State->SetError(
				FString::Printf(TEXT("expected %s, found %s"), KindName(RequiredType), KindName(Value->Type)), 1, 1);
			return false;
		}
		OutValue = MoveTemp(Value);
		return true;
	}

	bool FJsonParser::ReadNext(EJsonNotation& Notation)
	{
		return State->NextToken_(Notation);
	}

	bool FJsonParser::SkipContainer(EJsonNotation StartNotation)
	{
		const EJsonNotation EndNotation =
			StartNotation == EJsonNotation::ObjectStart ? EJsonNotation::ObjectEnd : EJsonNotation::ArrayEnd;
		int32 Level = 1;
		EJsonNotation Notation = EJsonNotation::Null;
		while (State->NextToken_(Notation))
		{
			if (Notation == EJsonNotation::ObjectStart || Notation == EJsonNotation::ArrayStart)
			{
				++Level;
			}
			else if (Notation == EJsonNotation::ObjectEnd || Notation == EJsonNotation::ArrayEnd)
			{
				if (--Level == 0)
				{
					return Notation == EndNotation;
				}
			}
		}
		return false;
	}

	const FString& FJsonParser::GetIdentifier() const
	{
		static const FString Empty;
		return State->Current ? State->Current->Identifier : Empty;
	}

	const FString& FJsonParser::GetValueAsString() const
	{
		static const FString Empty;
		return State->Current && State->Current->Notation == EJsonNotation::String ? State->Current->Text : Empty;
	}

	double FJsonParser::GetValueAsNumber() const
	{
		return State->Current ? State->Current->Number : 0.0;
	}

	const FString& FJsonParser::GetValueAsNumberString() const
	{
		static const FString Empty;
		return State->Current && State->Current->Notation == EJsonNotation::Number ? State->Current->Text : Empty;
	}

	bool FJsonParser::GetValueAsBoolean() const
	{
		return State->Current && State->Current->bBoolean;
	}

	const FString& FJsonParser::GetErrorMessage() const
	{
		return State->ErrorMessage;
	}

	uint32 FJsonParser::GetLineNumber() const
	{
		return State->ErrorLine;
	}

	uint32 FJsonParser::GetCharacterNumber() const
	{
		return State->ErrorCharacter;
	}
} // namespace UE::Json::Private

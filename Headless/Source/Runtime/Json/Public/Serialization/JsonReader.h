// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/StringView.h"
#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "Serialization/JsonTypes.h"
#include "Templates/SharedPointer.h"

class FArchive;
class FJsonSerializer;
class FJsonValue;

namespace UE::Json::Private
{
	/**
	 * Parses the Json text of one reader, either into a tree of values in one pass or into notations handed out
	 * one at a time. Text is read as UTF-8 or UTF-16, depending on the reader's character type.
	 */
	class JSON_API FJsonParser
	{
	public:
		/** Containers may nest this deep; deeper text is rejected, so that no later walk of the tree can run out of
		 * stack. */
		static constexpr int32 MaxDepth = 1024;

		FJsonParser();
		~FJsonParser();
		FJsonParser(const FJsonParser&) = delete;
		FJsonParser& operator=(const FJsonParser&) = delete;

		/** Reads the text from Data, which must outlive the parser. */
		void SetSource(const UTF8CHAR* Data, int64 Length);
		void SetSource(const ANSICHAR* Data, int64 Length);

		/** Reads the text from Data, converted to UTF-8 right away. */
		void SetSource(const UTF16CHAR* Data, int64 Length);

		/** Reads what is left of Stream, as characters of CharSize bytes, when parsing starts. */
		void SetSource(FArchive* Stream, int32 CharSize);

		/**
		 * Parses the next whole value (the root, unless ReadNext went first) into a tree.
		 * @param RequiredType The kind the value must be, or EJson::None for any.
		 * @param bStoreNumbersAsStrings Keep numbers as their text (FJsonValueNumberString).
		 */
		bool ParseValue(TSharedPtr<FJsonValue>& OutValue, EJson RequiredType, bool bStoreNumbersAsStrings);

		bool ReadNext(EJsonNotation& Notation);
		bool SkipContainer(EJsonNotation StartNotation);

		const FString& GetIdentifier() const;
		const FString& GetValueAsString() const;
		double GetValueAsNumber() const;
		const FString& GetValueAsNumberString() const;
		bool GetValueAsBoolean() const;
		const FString& GetErrorMessage() const;
		uint32 GetLineNumber() const;
		uint32 GetCharacterNumber() const;

	private:
		struct FState;
		FState* State;
	};
} // namespace UE::Json::Private

/**
 * Reads Json text. Either hand the reader to FJsonSerializer::Deserialize, which builds the whole tree, or walk
 * the text with ReadNext. The text must be one Json value (any kind), optionally surrounded by whitespace;
 * anything after it is an error. Containers may nest at most UE::Json::Private::FJsonParser::MaxDepth deep.
 */
template <class CharType = TCHAR>
class TJsonReader
{
public:
	/** A reader of the rest of Stream, read as characters of CharType. The stream must outlive the reader. */
	static TSharedRef<TJsonReader<CharType>> Create(FArchive* const Stream)
	{
		return MakeShareable(new TJsonReader<CharType>(Stream));
	}

	virtual ~TJsonReader() = default;

	/**
	 * Reads the next notation. GetIdentifier gives its field name inside an object, the GetValueAs functions its
	 * value. Returns false at the end of the text (Notation unchanged) or on an error (Notation is Error and
	 * GetErrorMessage says why).
	 */
	bool ReadNext(EJsonNotation& Notation) { return Parser.ReadNext(Notation); }

	/** Skips the rest of the object whose ObjectStart was just read, up to and including its end. */
	bool SkipObject() { return Parser.SkipContainer(EJsonNotation::ObjectStart); }

	/** Skips the rest of the array whose ArrayStart was just read, up to and including its end. */
	bool SkipArray() { return Parser.SkipContainer(EJsonNotation::ArrayStart); }

	virtual const FString& GetIdentifier() const { return Parser.GetIdentifier(); }
	virtual const FString& GetValueAsString() const { return Parser.GetValueAsString(); }
	double GetValueAsNumber() const { return Parser.GetValueAsNumber(); }

	/** The text of the number just read, exactly as written. */
	const FString& GetValueAsNumberString() const { return Parser.GetValueAsNumberString(); }
	bool GetValueAsBoolean() const { return Parser.GetValueAsBoolean(); }

	/** Why reading failed, with the line and character where it did; empty while all is well. */
	const FString& GetErrorMessage() const { return Parser.GetErrorMessage(); }

	/** The line (from 1) of the error. */
	uint32 GetLineNumber() const { return Parser.GetLineNumber(); }

	/** The character within its line (from 1) of the error. */
	uint32 GetCharacterNumber() const { return Parser.GetCharacterNumber(); }

protected:
	friend class FJsonSerializer;

	TJsonReader() = default;

	explicit TJsonReader(FArchive* InStream) { Parser.SetSource(InStream, static_cast<int32>(sizeof(CharType))); }

	UE::Json::Private::FJsonParser Parser;
};

/** Reads Json from a string it keeps a copy of. */
class FJsonStringReader : public TJsonReader<TCHAR>
{
public:
	static TSharedRef<FJsonStringReader> Create(const FString& JsonString)
	{
		return MakeShareable(new FJsonStringReader(JsonString));
	}

	static TSharedRef<FJsonStringReader> Create(FString&& JsonString)
	{
		return MakeShareable(new FJsonStringReader(MoveTemp(JsonString)));
	}

	const FString& GetSourceString() const { return Content; }

protected:
	explicit FJsonStringReader(const FString& JsonString)
		: Content(JsonString)
	{
		Parser.SetSource(*Content, Content.Len());
	}

	explicit FJsonStringReader(FString&& JsonString)
		: Content(MoveTemp(JsonString))
	{
		Parser.SetSource(*Content, Content.Len());
	}

	FString Content;
};

/** Reads Json from characters it does not own; they must outlive the reader. UTF8CHAR text is read as is. */
template <class CharType = TCHAR>
class TJsonStringViewReader : public TJsonReader<CharType>
{
public:
	static TSharedRef<TJsonStringViewReader> Create(TStringView<CharType> JsonString)
	{
		return MakeShareable(new TJsonStringViewReader(JsonString));
	}

	explicit TJsonStringViewReader(TStringView<CharType> JsonString)
		: Content(JsonString)
	{
		this->Parser.SetSource(Content.GetData(), Content.Len());
	}

protected:
	TStringView<CharType> Content;
};

/** Makes Json readers. TJsonReaderFactory<UTF8CHAR>::CreateFromView reads UTF-8 bytes without converting them first. */
template <class CharType = TCHAR>
class TJsonReaderFactory
{
public:
	static TSharedRef<TJsonReader<TCHAR>> Create(const FString& JsonString)
	{
		return FJsonStringReader::Create(JsonString);
	}

	static TSharedRef<TJsonReader<TCHAR>> Create(FString&& JsonString)
	{
		return FJsonStringReader::Create(MoveTemp(JsonString));
	}

	static TSharedRef<TJsonReader<CharType>> Create(FArchive* const Stream)
	{
		return TJsonReader<CharType>::Create(Stream);
	}

	static TSharedRef<TJsonReader<CharType>> CreateFromView(TStringView<CharType> JsonString)
	{
		return TJsonStringViewReader<CharType>::Create(JsonString);
	}
};

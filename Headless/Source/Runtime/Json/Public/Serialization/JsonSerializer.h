// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonWriter.h"
#include "Templates/SharedPointer.h"

/** Turns Json text into trees of FJsonValue and back. */
class FJsonSerializer
{
public:
	enum class EFlags
	{
		None = 0,
		/** Numbers become FJsonValueNumberString, which keeps their text and so every digit. */
		StoreNumbersAsStrings = 1,
	};

	/** Reads an array; false (see the reader's GetErrorMessage) when the text is not one valid Json array. */
	template <class CharType>
	static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, TArray<TSharedPtr<FJsonValue>>& OutArray,
		EFlags InOptions = EFlags::None)
	{
		return Deserialize(*Reader, OutArray, InOptions);
	}

	template <class CharType>
	static bool Deserialize(
		TJsonReader<CharType>& Reader, TArray<TSharedPtr<FJsonValue>>& OutArray, EFlags InOptions = EFlags::None)
	{
		TSharedPtr<FJsonValue> Value;
		if (!Reader.Parser.ParseValue(Value, EJson::Array, InOptions == EFlags::StoreNumbersAsStrings))
		{
			return false;
		}
		OutArray = Value->AsArray();
		return true;
	}

	/** Reads an object; false (see the reader's GetErrorMessage) when the text is not one valid Json object. */
	template <class CharType>
	static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, TSharedPtr<FJsonObject>& OutObject,
		EFlags InOptions = EFlags::None)
	{
		return Deserialize(*Reader, OutObject, InOptions);
	}

	template <class CharType>
	static bool Deserialize(
		TJsonReader<CharType>& Reader, TSharedPtr<FJsonObject>& OutObject, EFlags InOptions = EFlags::None)
	{
		TSharedPtr<FJsonValue> Value;
		if (!Reader.Parser.ParseValue(Value, EJson::Object, InOptions == EFlags::StoreNumbersAsStrings))
		{
			return false;
		}
		OutObject = Value->AsObject();
		return true;
	}

	/** Reads a value of any kind; false (see the reader's GetErrorMessage) when the text is not one valid Json value.
	 */
	template <class CharType>
	static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, TSharedPtr<FJsonValue>& OutValue,
		EFlags InOptions = EFlags::None)
	{
		return Deserialize(*Reader, OutValue, InOptions);
	}

	template <class CharType>
	static bool Deserialize(
		TJsonReader<CharType>& Reader, TSharedPtr<FJsonValue>& OutValue, EFlags InOptions = EFlags::None)
	{
		return Reader.Parser.ParseValue(OutValue, EJson::None, InOptions == EFlags::StoreNumbersAsStrings);
	}

	/** Serialize the passed array of json values into the writer. */
	template <class CharType, class PrintPolicy>
	static bool Serialize(const TArray<TSharedPtr<FJsonValue>>& Array,
		const TSharedRef<TJsonWriter<CharType, PrintPolicy>>& Writer, bool bCloseWriter = true)
	{
		return Serialize(Array, *Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(const TArray<TSharedPtr<FJsonValue>>& Array, TJsonWriter<CharType, PrintPolicy>& Writer,
		bool bCloseWriter = true)
	{
		WriteArray(Array, Writer);
		return Finish(Writer, bCloseWriter);
	}

	/** Serialize the passed Json object into the writer. */
	template <class CharType, class PrintPolicy>
	static bool Serialize(const TSharedRef<FJsonObject>& Object,
		const TSharedRef<TJsonWriter<CharType, PrintPolicy>>& Writer, bool bCloseWriter = true)
	{
		return Serialize(Object, *Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(
		const TSharedRef<FJsonObject>& Object, TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter = true)
	{
		WriteObject(*Object, Writer);
		return Finish(Writer, bCloseWriter);
	}

	/**
	 * Serialize the passed value into the writer. Identifier names the value when the writer is inside an object;
	 * pass an empty string otherwise.
	 */
	template <class CharType, class PrintPolicy>
	static bool Serialize(const TSharedPtr<FJsonValue>& Value, const FString& Identifier,
		const TSharedRef<TJsonWriter<CharType, PrintPolicy>>& Writer, bool bCloseWriter = true)
	{
		return Serialize(Value, Identifier, *Writer, bCloseWriter);
	}

	template <class CharType, class PrintPolicy>
	static bool Serialize(const TSharedPtr<FJsonValue>& Value, const FString& Identifier,
		TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter = true)
	{
		if (!Identifier.IsEmpty())
		{
			Writer.WriteIdentifierPrefix(Identifier);
		}
		WriteValue(Value, Writer);
		return Finish(Writer, bCloseWriter);
	}

private:
	template <class CharType, class PrintPolicy>
	static bool Finish(TJsonWriter<CharType, PrintPolicy>& Writer, bool bCloseWriter)
	{
		return bCloseWriter ? Writer.Close() : true;
	}

	template <class CharType, class PrintPolicy>
	static void WriteArray(const TArray<TSharedPtr<FJsonValue>>& Array, TJsonWriter<CharType, PrintPolicy>& Writer)
	{
		Writer.WriteArrayStart();
		for (const TSharedPtr<FJsonValue>& Element : Array)
		{
			WriteValue(Element, Writer);
		}
		Writer.WriteArrayEnd();
	}

	template <class CharType, class PrintPolicy>
	static void WriteObject(const FJsonObject& Object, TJsonWriter<CharType, PrintPolicy>& Writer)
	{
		Writer.WriteObjectStart();
		for (const auto& Pair : Object.Values)
		{
			Writer.WriteIdentifierPrefix(Pair.Key);
			WriteValue(Pair.Value, Writer);
		}
		Writer.WriteObjectEnd();
	}

	/** Writes one value where the writer stands (after an identifier, in an array or at the top level). */
	template <class CharType, class PrintPolicy>
	static void WriteValue(const TSharedPtr<FJsonValue>& Value, TJsonWriter<CharType, PrintPolicy>& Writer)
	{
		if (!Value.IsValid())
		{
			Writer.WriteNull();
			return;
		}
		switch (Value->Type)
		{
			case EJson::String:
				Writer.WriteValue(Value->AsString());
				break;
			case EJson::Number:
			{
				FString NumberText;
				// Numbers kept as text are written as read, so that no digit is lost.
				if (dynamic_cast<const FJsonValueNumberString*>(Value.Get()) && Value->TryGetString(NumberText))
				{
					Writer.WriteRawJSONValue(NumberText);
				}
				else
				{
					Writer.WriteValue(Value->AsNumber());
				}
				break;
			}
			case EJson::Boolean:
				Writer.WriteValue(Value->AsBool());
				break;
			case EJson::Array:
				WriteArray(Value->AsArray(), Writer);
				break;
			case EJson::Object:
			{
				const TSharedPtr<FJsonObject>& Object = Value->AsObject();
				if (Object.IsValid())
				{
					WriteObject(*Object, Writer);
				}
				else
				{
					Writer.WriteNull();
				}
				break;
			}
			case EJson::Null:
			case EJson::None:
			default:
				Writer.WriteNull();
				break;
		}
	}
};

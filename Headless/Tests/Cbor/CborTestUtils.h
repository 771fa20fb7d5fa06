// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CborReader.h"
#include "CborTypes.h"
#include "Containers/StringConv.h"
#include "Serialization/MemoryReader.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace CborTestUtils
{
	/** Bytes from a string of hexadecimal digits ("83 01 02"; spaces are ignored). */
	inline TArray<uint8> FromHex(const char* Hex)
	{
		TArray<uint8> Bytes;
		int32 Nibbles = 0;
		uint8 Byte = 0;
		for (const char* Char = Hex; *Char; ++Char)
		{
			int32 Value;
			if (*Char >= '0' && *Char <= '9')
			{
				Value = *Char - '0';
			}
			else if (*Char >= 'a' && *Char <= 'f')
			{
				Value = *Char - 'a' + 10;
			}
			else if (*Char >= 'A' && *Char <= 'F')
			{
				Value = *Char - 'A' + 10;
			}
			else
			{
				continue;
			}
			Byte = static_cast<uint8>((Byte << 4) | Value);
			if (++Nibbles % 2 == 0)
			{
				Bytes.Add(Byte);
				Byte = 0;
			}
		}
		return Bytes;
	}

	inline std::string ToHex(const TArray<uint8>& Bytes)
	{
		std::string Hex;
		char Buffer[3];
		for (const uint8 Byte : Bytes)
		{
			std::snprintf(Buffer, sizeof(Buffer), "%02x", Byte);
			Hex += Buffer;
		}
		return Hex;
	}

	inline std::string FormatDouble(double Value)
	{
		if (std::isnan(Value))
		{
			return "NaN";
		}
		if (std::isinf(Value))
		{
			return Value > 0 ? "Infinity" : "-Infinity";
		}
		char Buffer[40];
		std::snprintf(Buffer, sizeof(Buffer), "%.17g", Value);
		// Trim to the shortest text that reads back the same, for readable expectations.
		for (int32 Precision = 1; Precision <= 17; ++Precision)
		{
			char Short[40];
			std::snprintf(Short, sizeof(Short), "%.*g", Precision, Value);
			if (std::strtod(Short, nullptr) == Value)
			{
				return Short;
			}
		}
		return Buffer;
	}

	/**
	 * Writes the item Context starts, and everything it holds, in the diagnostic notation of RFC 8949 (floats
	 * marked _1, _2 or _3 after their width). Returns false when the reader fails inside it.
	 */
	inline bool Describe(FCborReader& Reader, const FCborContext& Context, std::string& Out)
	{
		if (Context.IsError())
		{
			return false;
		}
		const ECborCode Major = Context.MajorType();
		if (Context.IsContainer())
		{
			const bool bIndefinite = Context.IsIndefiniteContainer();
			const char* Open = Major == ECborCode::Array ? "[" : (Major == ECborCode::Map ? "{" : "(");
			const char* Close = Major == ECborCode::Array ? "]" : (Major == ECborCode::Map ? "}" : ")");
			Out += Open;
			if (bIndefinite)
			{
				Out += "_ ";
			}
			int32 Index = 0;
			FCborContext Item;
			while (Reader.ReadNext(Item))
			{
				if (Item.IsBreak())
				{
					if (Item.AsBreak() != Major)
					{
						return false;
					}
					Out += Close;
					return true;
				}
				if (Index > 0)
				{
					Out += (Major == ECborCode::Map && Index % 2 == 1) ? ": " : ", ";
				}
				++Index;
				if (!Describe(Reader, Item, Out))
				{
					return false;
				}
			}
			return false;
		}
		char Buffer[64];
		switch (Major)
		{
			case ECborCode::Uint:
				Out += std::to_string(Context.AsUInt());
				return true;
			case ECborCode::Int:
				Out += std::to_string(Context.AsInt());
				return true;
			case ECborCode::ByteString:
			{
				Out += "h'";
				for (const uint8 Byte : Context.AsByteArray())
				{
					std::snprintf(Buffer, sizeof(Buffer), "%02x", Byte);
					Out += Buffer;
				}
				Out += "'";
				return true;
			}
			case ECborCode::TextString:
				Out += "\"";
				Out += Context.AsCString();
				Out += "\"";
				return true;
			case ECborCode::Tag:
			{
				Out += std::to_string(Context.AsUInt()) + "(";
				FCborContext Tagged;
				if (!Reader.ReadNext(Tagged) || !Describe(Reader, Tagged, Out))
				{
					return false;
				}
				Out += ")";
				return true;
			}
			case ECborCode::Prim:
			default:
				break;
		}
		switch (Context.AdditionalValue())
		{
			case ECborCode::False:
			case ECborCode::True:
				Out += Context.AsBool() ? "true" : "false";
				return true;
			case ECborCode::Null:
				Out += "null";
				return true;
			case ECborCode::Undefined:
				Out += "undefined";
				return true;
			case ECborCode::Value_2Bytes:
				Out += FormatDouble(Context.AsFloat()) + "_1";
				return true;
			case ECborCode::Value_4Bytes:
				Out += FormatDouble(Context.AsFloat()) + "_2";
				return true;
			case ECborCode::Value_8Bytes:
				Out += FormatDouble(Context.AsDouble()) + "_3";
				return true;
			default:
				Out += "simple(" + std::to_string(Context.UIntValue) + ")";
				return true;
		}
	}

	/** Decodes one item of big-endian CBOR to diagnostic notation, or "error:<code>" when reading fails. */
	inline std::string Diagnose(const char* Hex)
	{
		const TArray<uint8> Bytes = FromHex(Hex);
		FMemoryReader Archive(Bytes);
		FCborReader Reader(&Archive, ECborEndianness::StandardCompliant);
		FCborContext Context;
		std::string Out;
		if (!Reader.ReadNext(Context) || !Describe(Reader, Context, Out))
		{
			char Buffer[32];
			std::snprintf(Buffer, sizeof(Buffer), "error:%02x", static_cast<uint8>(Reader.GetError().RawCode()));
			return Buffer;
		}
		FCborContext End;
		if (Reader.ReadNext(End) || End.RawCode() != ECborCode::StreamEnd)
		{
			return "trailing data";
		}
		return Out;
	}
} // namespace CborTestUtils

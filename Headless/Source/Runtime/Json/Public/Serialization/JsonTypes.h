// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** The kinds of Json value. */
enum class EJson
{
	None,
	Null,
	String,
	Number,
	Boolean,
	Array,
	Object
};

/** The tokens of Json text. */
enum class EJsonToken
{
	None,
	Comma,
	CurlyOpen,
	CurlyClose,
	SquareOpen,
	SquareClose,
	Colon,
	String,
	Number,
	True,
	False,
	Null,
	Identifier
};

/** What TJsonReader::ReadNext found. */
enum class EJsonNotation
{
	ObjectStart,
	ObjectEnd,
	ArrayStart,
	ArrayEnd,
	Boolean,
	String,
	Number,
	Null,
	Error
};

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** Maximum size of a name, including the terminating null character. */
enum
{
	NAME_SIZE = 1024
};

/** The number stored in a name without a number suffix. */
#define NAME_NO_NUMBER_INTERNAL 0

/** Conversion between the number a name shows ("Foo_3" shows 3) and the one it stores (4). */
#define NAME_INTERNAL_TO_EXTERNAL(x) (x - 1)
#define NAME_EXTERNAL_TO_INTERNAL(x) (x + 1)
#define NAME_NO_NUMBER NAME_INTERNAL_TO_EXTERNAL(NAME_NO_NUMBER_INTERNAL)

/**
 * Names known at compile time. Each one is registered in the name table at the index of its value,
 * so FName(NAME_X) needs no lookup.
 */
enum class EName : uint32
{
	None = 0,
	ByteProperty,
	IntProperty,
	BoolProperty,
	FloatProperty,
	ObjectProperty,
	NameProperty,
	StrProperty,
	StructProperty,
	ArrayProperty,
	TextProperty,
	Core,
	Engine,
	Editor,
	Object,
	Class,
	Package,
	Actor,
	Default,
	Game,
	Name,
	Vector,
	Rotator,
	Color,
	Transform,

	MaxHardcodedNameIndex,
};

inline constexpr EName NAME_None = EName::None;
inline constexpr EName NAME_ByteProperty = EName::ByteProperty;
inline constexpr EName NAME_IntProperty = EName::IntProperty;
inline constexpr EName NAME_BoolProperty = EName::BoolProperty;
inline constexpr EName NAME_FloatProperty = EName::FloatProperty;
inline constexpr EName NAME_ObjectProperty = EName::ObjectProperty;
inline constexpr EName NAME_NameProperty = EName::NameProperty;
inline constexpr EName NAME_StrProperty = EName::StrProperty;
inline constexpr EName NAME_StructProperty = EName::StructProperty;
inline constexpr EName NAME_ArrayProperty = EName::ArrayProperty;
inline constexpr EName NAME_TextProperty = EName::TextProperty;
inline constexpr EName NAME_Core = EName::Core;
inline constexpr EName NAME_Engine = EName::Engine;
inline constexpr EName NAME_Editor = EName::Editor;
inline constexpr EName NAME_Object = EName::Object;
inline constexpr EName NAME_Class = EName::Class;
inline constexpr EName NAME_Package = EName::Package;
inline constexpr EName NAME_Actor = EName::Actor;
inline constexpr EName NAME_Default = EName::Default;
inline constexpr EName NAME_Game = EName::Game;
inline constexpr EName NAME_Name = EName::Name;
inline constexpr EName NAME_Vector = EName::Vector;
inline constexpr EName NAME_Rotator = EName::Rotator;
inline constexpr EName NAME_Color = EName::Color;
inline constexpr EName NAME_Transform = EName::Transform;

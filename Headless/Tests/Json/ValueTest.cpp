// Copyright Orvane. All Rights Reserved.

#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "EngineTestPrinters.h"
#include "JsonTestUtils.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using JsonTestUtils::FLogCapture;

namespace
{
	TSharedPtr<FJsonObject> MakeSample()
	{
		TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
		Object->SetStringField(TEXT("name"), TEXT("cam"));
		Object->SetNumberField(TEXT("count"), 3);
		Object->SetNumberField(TEXT("half"), 2.5);
		Object->SetNumberField(TEXT("negHalf"), -2.5);
		Object->SetNumberField(TEXT("big"), 3e9);
		Object->SetNumberField(TEXT("negative"), -1);
		Object->SetBoolField(TEXT("on"), true);
		Object->SetField(TEXT("nothing"), MakeShared<FJsonValueNull>());
		TArray<TSharedPtr<FJsonValue>> List;
		List.Add(MakeShared<FJsonValueString>(TEXT("a")));
		List.Add(MakeShared<FJsonValueNumber>(7));
		Object->SetArrayField(TEXT("list"), List);
		TSharedPtr<FJsonObject> Child = MakeShared<FJsonObject>();
		Child->SetNumberField(TEXT("x"), 1.25);
		Object->SetObjectField(TEXT("child"), Child);
		return Object;
	}
} // namespace

TEST(JsonValue, GettersReturnWhatTheSettersStored)
{
	const TSharedPtr<FJsonObject> Object = MakeSample();
	FLogCapture Log;
	EXPECT_EQ(Object->GetStringField(TEXT("name")), TEXT("cam"));
	EXPECT_EQ(Object->GetNumberField(TEXT("count")), 3.0);
	EXPECT_EQ(Object->GetIntegerField(TEXT("count")), 3);
	EXPECT_TRUE(Object->GetBoolField(TEXT("on")));
	ASSERT_EQ(Object->GetArrayField(TEXT("list")).Num(), 2);
	EXPECT_EQ(Object->GetArrayField(TEXT("list"))[0]->AsString(), TEXT("a"));
	EXPECT_EQ(Object->GetObjectField(TEXT("child"))->GetNumberField(TEXT("x")), 1.25);
	EXPECT_TRUE(Object->GetField<EJson::Null>(TEXT("nothing"))->IsNull());
	EXPECT_EQ(Object->GetField<EJson::Number>(TEXT("count"))->AsNumber(), 3.0);
	EXPECT_EQ(Object->GetField(TEXT("name"), EJson::String)->AsString(), TEXT("cam"));
	EXPECT_TRUE(Log.Errors.IsEmpty());
}

TEST(JsonValue, NarrowFieldNamesWorkLikeWideOnes)
{
	const TSharedPtr<FJsonObject> Object = MakeSample();
	FLogCapture Log;
	EXPECT_EQ(Object->GetStringField("name"), TEXT("cam"));
	double Half = 0.0;
	EXPECT_TRUE(Object->TryGetNumberField("half", Half));
	EXPECT_EQ(Half, 2.5);
	EXPECT_TRUE(Object->HasField("child"));
	EXPECT_TRUE(Object->HasTypedField<EJson::Object>("child"));
	EXPECT_FALSE(Object->HasTypedField<EJson::Array>("child"));
	EXPECT_EQ(Object->GetField<EJson::Boolean>("on")->AsBool(), true);
	EXPECT_TRUE(Log.Errors.IsEmpty());
}

TEST(JsonValue, HasFieldRemoveFieldAndTryGetField)
{
	const TSharedPtr<FJsonObject> Object = MakeSample();
	EXPECT_TRUE(Object->HasField(TEXT("name")));
	EXPECT_TRUE(Object->HasField(TEXT("NAME")));
	EXPECT_TRUE(Object->HasTypedField<EJson::String>(TEXT("name")));
	EXPECT_FALSE(Object->HasTypedField<EJson::Number>(TEXT("name")));
	EXPECT_TRUE(Object->HasTypedField(TEXT("list"), EJson::Array));
	EXPECT_TRUE(Object->TryGetField(TEXT("list")).IsValid());
	EXPECT_FALSE(Object->TryGetField(TEXT("missing")).IsValid());
	Object->RemoveField(TEXT("name"));
	EXPECT_FALSE(Object->HasField(TEXT("name")));
	Object->RemoveField(TEXT("missing"));
	EXPECT_EQ(Object->Values.Num(), 9);
}

TEST(JsonValue, TryGettersFailOnMissingFieldsAndWrongTypesWithoutLogging)
{
	const TSharedPtr<FJsonObject> Object = MakeSample();
	FLogCapture Log;
	double Number = -1.0;
	FString String = TEXT("unchanged");
	bool bValue = false;
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	const TSharedPtr<FJsonObject>* Child = nullptr;

	EXPECT_FALSE(Object->TryGetNumberField(TEXT("missing"), Number));
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("list"), Number));
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("name"), Number));
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("nothing"), Number));
	EXPECT_EQ(Number, -1.0);
	EXPECT_FALSE(Object->TryGetStringField(TEXT("missing"), String));
	EXPECT_FALSE(Object->TryGetStringField(TEXT("child"), String));
	EXPECT_FALSE(Object->TryGetStringField(TEXT("nothing"), String));
	EXPECT_EQ(String, TEXT("unchanged"));
	EXPECT_FALSE(Object->TryGetBoolField(TEXT("missing"), bValue));
	EXPECT_FALSE(Object->TryGetBoolField(TEXT("name"), bValue));
	EXPECT_FALSE(Object->TryGetBoolField(TEXT("list"), bValue));
	EXPECT_FALSE(Object->TryGetArrayField(TEXT("missing"), Array));
	EXPECT_FALSE(Object->TryGetArrayField(TEXT("child"), Array));
	EXPECT_EQ(Array, nullptr);
	EXPECT_FALSE(Object->TryGetObjectField(TEXT("missing"), Child));
	EXPECT_FALSE(Object->TryGetObjectField(TEXT("list"), Child));
	EXPECT_EQ(Child, nullptr);
	TArray<FString> Strings;
	EXPECT_FALSE(Object->TryGetStringArrayField(TEXT("child"), Strings));
	EXPECT_TRUE(Log.Errors.IsEmpty());

	EXPECT_TRUE(Object->TryGetArrayField(TEXT("list"), Array));
	ASSERT_NE(Array, nullptr);
	EXPECT_EQ(Array->Num(), 2);
	EXPECT_TRUE(Object->TryGetObjectField(TEXT("child"), Child));
	ASSERT_NE(Child, nullptr);
	EXPECT_EQ((*Child)->GetNumberField(TEXT("x")), 1.25);
	EXPECT_TRUE(Object->TryGetStringArrayField(TEXT("list"), Strings));
	EXPECT_EQ(Strings, (TArray<FString>{TEXT("a"), TEXT("7")}));
}

TEST(JsonValue, IntegerGettersCheckRangeAndRoundHalfAwayFromZero)
{
	const TSharedPtr<FJsonObject> Object = MakeSample();
	int32 Int32Value = 0;
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("half"), Int32Value));
	EXPECT_EQ(Int32Value, 3);
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("negHalf"), Int32Value));
	EXPECT_EQ(Int32Value, -3);
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("big"), Int32Value));
	uint32 UInt32Value = 0;
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("big"), UInt32Value));
	EXPECT_EQ(UInt32Value, 3000000000u);
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("negative"), UInt32Value));
	int64 Int64Value = 0;
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("big"), Int64Value));
	EXPECT_EQ(Int64Value, 3000000000LL);
	uint64 UInt64Value = 0;
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("negative"), UInt64Value));
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("count"), UInt64Value));
	EXPECT_EQ(UInt64Value, 3u);
	int8 Int8Value = 0;
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("negative"), Int8Value));
	EXPECT_EQ(Int8Value, -1);
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("big"), Int8Value));
	uint8 UInt8Value = 0;
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("negative"), UInt8Value));
	int16 Int16Value = 0;
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("count"), Int16Value));
	EXPECT_EQ(Int16Value, 3);
	uint16 UInt16Value = 0;
	EXPECT_FALSE(Object->TryGetNumberField(TEXT("big"), UInt16Value));
	float FloatValue = 0.0f;
	EXPECT_TRUE(Object->TryGetNumberField(TEXT("half"), FloatValue));
	EXPECT_EQ(FloatValue, 2.5f);

	const FJsonValueNumber Huge(1e300);
	EXPECT_FALSE(Huge.TryGetNumber(FloatValue));
	EXPECT_FALSE(Huge.TryGetNumber(Int64Value));
	const FJsonValueNumber TwoToThe63(9223372036854775808.0);
	EXPECT_FALSE(TwoToThe63.TryGetNumber(Int64Value));
	EXPECT_TRUE(TwoToThe63.TryGetNumber(UInt64Value));
	EXPECT_EQ(UInt64Value, 9223372036854775808ULL);
	const FJsonValueNumber NotANumber(std::numeric_limits<double>::quiet_NaN());
	EXPECT_FALSE(NotANumber.TryGetNumber(Int32Value));
}

TEST(JsonValue, ValuesConvertWhereAConversionMakesSense)
{
	double Number = 0.0;
	FString String;
	bool bValue = false;

	EXPECT_TRUE(FJsonValueString(TEXT("12.5")).TryGetNumber(Number));
	EXPECT_EQ(Number, 12.5);
	EXPECT_TRUE(FJsonValueString(TEXT("-3")).TryGetNumber(Number));
	EXPECT_EQ(Number, -3.0);
	EXPECT_FALSE(FJsonValueString(TEXT("abc")).TryGetNumber(Number));
	EXPECT_FALSE(FJsonValueString(TEXT("")).TryGetNumber(Number));
	int64 Int64Value = 0;
	EXPECT_TRUE(FJsonValueString(TEXT("9007199254740993")).TryGetNumber(Int64Value));
	EXPECT_EQ(Int64Value, 9007199254740993LL);
	EXPECT_TRUE(FJsonValueString(TEXT("TRUE")).TryGetBool(bValue));
	EXPECT_TRUE(bValue);
	EXPECT_TRUE(FJsonValueString(TEXT("false")).TryGetBool(bValue));
	EXPECT_FALSE(bValue);
	EXPECT_FALSE(FJsonValueString(TEXT("yes")).TryGetBool(bValue));

	EXPECT_TRUE(FJsonValueNumber(12.0).TryGetString(String));
	EXPECT_EQ(String, TEXT("12"));
	EXPECT_TRUE(FJsonValueNumber(0.1).TryGetString(String));
	EXPECT_EQ(String, TEXT("0.1"));
	EXPECT_TRUE(FJsonValueNumber(-2.5e-7).TryGetString(String));
	EXPECT_EQ(String, TEXT("-2.5e-07"));
	EXPECT_TRUE(FJsonValueNumber(0.0).TryGetBool(bValue));
	EXPECT_FALSE(bValue);
	EXPECT_TRUE(FJsonValueNumber(-1.0).TryGetBool(bValue));
	EXPECT_TRUE(bValue);

	EXPECT_TRUE(FJsonValueBoolean(true).TryGetNumber(Number));
	EXPECT_EQ(Number, 1.0);
	EXPECT_TRUE(FJsonValueBoolean(false).TryGetString(String));
	EXPECT_EQ(String, TEXT("false"));

	const FJsonValueNumberString Exact(TEXT("1.5e3"));
	EXPECT_TRUE(Exact.TryGetNumber(Number));
	EXPECT_EQ(Number, 1500.0);
	EXPECT_TRUE(Exact.TryGetNumber(Int64Value));
	EXPECT_EQ(Int64Value, 1500);
	EXPECT_TRUE(Exact.TryGetString(String));
	EXPECT_EQ(String, TEXT("1.5e3"));
	EXPECT_FALSE(FJsonValueNumberString(TEXT("not a number")).TryGetNumber(Number));

	const FJsonValueNull Null;
	EXPECT_TRUE(Null.IsNull());
	EXPECT_FALSE(Null.TryGetNumber(Number));
	EXPECT_FALSE(Null.TryGetString(String));
	EXPECT_FALSE(Null.TryGetBool(bValue));
	const TArray<TSharedPtr<FJsonValue>>* Array = nullptr;
	EXPECT_FALSE(Null.TryGetArray(Array));
	const TSharedPtr<FJsonObject>* Object = nullptr;
	EXPECT_FALSE(Null.TryGetObject(Object));
	EXPECT_FALSE(FJsonValueArray(TArray<TSharedPtr<FJsonValue>>()).TryGetString(String));
	EXPECT_FALSE(FJsonValueObject(MakeShared<FJsonObject>()).TryGetNumber(Number));
}

TEST(JsonValue, AsGettersLogAnErrorAndReturnADefaultWhenTheyCannot)
{
	const TSharedPtr<FJsonValue> Array = MakeShared<FJsonValueArray>(TArray<TSharedPtr<FJsonValue>>());
	const TSharedPtr<FJsonValue> String = MakeShared<FJsonValueString>(TEXT("x"));
	{
		FLogCapture Log;
		EXPECT_TRUE(Array->AsString().IsEmpty());
		EXPECT_TRUE(Log.HasError(TEXT("Json Value of type 'Array' used as a 'String'.")));
	}
	{
		FLogCapture Log;
		EXPECT_EQ(String->AsNumber(), 0.0);
		EXPECT_FALSE(String->AsBool());
		EXPECT_TRUE(String->AsArray().IsEmpty());
		EXPECT_FALSE(String->AsObject().IsValid());
		EXPECT_EQ(Log.Errors.Num(), 4);
	}
	{
		const TSharedPtr<FJsonObject> Object = MakeSample();
		FLogCapture Log;
		EXPECT_TRUE(Object->GetStringField(TEXT("missing")).IsEmpty());
		EXPECT_TRUE(Log.HasError(TEXT("Field missing was not found.")));
		EXPECT_TRUE(Object->GetArrayField(TEXT("name")).IsEmpty());
		EXPECT_TRUE(Log.HasError(TEXT("Field name is of the wrong type.")));
		EXPECT_FALSE(Object->GetObjectField(TEXT("list")).IsValid());
		EXPECT_TRUE(Object->GetField<EJson::Number>(TEXT("name"))->IsNull());
		EXPECT_EQ(Object->GetIntegerField(TEXT("big")), 0);
		EXPECT_TRUE(Log.HasError(TEXT("not a number within int32 range")));
	}
}

TEST(JsonValue, DuplicateCopiesDeeply)
{
	const TSharedPtr<FJsonObject> Original = MakeSample();
	const TSharedPtr<FJsonValue> Wrapped = MakeShared<FJsonValueObject>(Original);
	const TSharedPtr<FJsonValue> Copy = FJsonValue::Duplicate(Wrapped);
	ASSERT_TRUE(Copy.IsValid());
	EXPECT_TRUE(*Copy == *Wrapped);
	EXPECT_NE(Copy->AsObject().Get(), Original.Get());
	EXPECT_NE(Copy->AsObject()->GetObjectField(TEXT("child")).Get(), Original->GetObjectField(TEXT("child")).Get());

	Copy->AsObject()->GetObjectField(TEXT("child"))->SetNumberField(TEXT("x"), 99);
	EXPECT_EQ(Original->GetObjectField(TEXT("child"))->GetNumberField(TEXT("x")), 1.25);
	EXPECT_FALSE(*Copy == *Wrapped);

	const TSharedPtr<FJsonObject> Target = MakeShared<FJsonObject>();
	FJsonObject::Duplicate(Original, Target);
	EXPECT_TRUE(*Target == *Original);
	EXPECT_FALSE(FJsonValue::Duplicate(TSharedPtr<FJsonValue>()).IsValid());
}

TEST(JsonValue, CompareEqualLooksAtKindsAndContents)
{
	EXPECT_TRUE(FJsonValue::CompareEqual(FJsonValueNumber(1.0), FJsonValueNumber(1.0)));
	EXPECT_TRUE(FJsonValue::CompareEqual(FJsonValueNumber(1500.0), FJsonValueNumberString(TEXT("1.5e3"))));
	EXPECT_FALSE(FJsonValue::CompareEqual(FJsonValueNumber(1.0), FJsonValueString(TEXT("1"))));
	EXPECT_FALSE(FJsonValue::CompareEqual(FJsonValueString(TEXT("a")), FJsonValueString(TEXT("A"))));
	EXPECT_TRUE(FJsonValue::CompareEqual(FJsonValueNull(), FJsonValueNull()));
	EXPECT_FALSE(FJsonValue::CompareEqual(FJsonValueBoolean(true), FJsonValueBoolean(false)));
	TArray<TSharedPtr<FJsonValue>> A;
	A.Add(MakeShared<FJsonValueNumber>(1));
	TArray<TSharedPtr<FJsonValue>> B = A;
	B.Add(MakeShared<FJsonValueNumber>(2));
	EXPECT_FALSE(FJsonValue::CompareEqual(FJsonValueArray(A), FJsonValueArray(B)));
	EXPECT_TRUE(FJsonValue::CompareEqual(FJsonValueArray(B), FJsonValueArray(B)));
}

TEST(JsonValue, SettersReplaceFieldsOfTheSameName)
{
	const TSharedPtr<FJsonObject> Object = MakeShared<FJsonObject>();
	Object->SetNumberField(TEXT("v"), 1);
	Object->SetStringField(TEXT("V"), TEXT("now a string"));
	EXPECT_EQ(Object->Values.Num(), 1);
	EXPECT_TRUE(Object->HasTypedField<EJson::String>(TEXT("v")));
	Object->SetObjectField(TEXT("o"), nullptr);
	EXPECT_TRUE(Object->HasTypedField<EJson::Null>(TEXT("o")));
}

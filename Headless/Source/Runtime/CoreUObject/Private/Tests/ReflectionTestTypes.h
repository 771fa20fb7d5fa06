// Copyright Orvane. All Rights Reserved.

#pragma once

// Reflected types used by the object system's own tests (GoogleTest suites and automation tests).

#include "CoreMinimal.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/WeakObjectPtrTemplates.h"

#include "ReflectionTestTypes.generated.h"

/** An enum class stored in one byte. */
UENUM(BlueprintType)
enum class EReflectionTestMode : uint8
{
	First,
	Second UMETA(DisplayName = "Second Mode"),
	Third = 5,
};

/** An old-style namespaced enum used through TEnumAsByte. */
UENUM()
namespace EReflectionTestLegacy
{
	enum Type
	{
		Alpha,
		Beta,
	};
}

/** A small struct with a nested object reference. */
USTRUCT(BlueprintType)
struct COREUOBJECT_API FReflectionTestPoint
{
	GENERATED_BODY()

	UPROPERTY(EditAnywhere, Category = "Test")
	float X = 0.0f;

	UPROPERTY(EditAnywhere, Category = "Test")
	float Y = 0.0f;

	UPROPERTY()
	FString Label;

	UPROPERTY()
	TObjectPtr<UObject> Target;
};

/** The base test class. */
UCLASS(BlueprintType)
class COREUOBJECT_API UReflectionTestBase : public UObject
{
	GENERATED_BODY()

public:
	UPROPERTY(EditAnywhere, Category = "Base")
	int32 BaseValue = 7;

	UPROPERTY(Transient)
	int32 TransientValue = 0;
};

/** A class with one property of every supported kind. */
UCLASS(config = Game, meta = (ShortTooltip = "Test object"))
class COREUOBJECT_API UReflectionTestObject : public UReflectionTestBase
{
	GENERATED_BODY()

public:
	UReflectionTestObject();

	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Numbers",
		meta = (ConsoleVariable = "r.Test.Int", DisplayName = "Int Value"))
	int32 IntValue = 0;

	UPROPERTY()
	int8 Int8Value = 0;

	UPROPERTY()
	int16 Int16Value = 0;

	UPROPERTY()
	int64 Int64Value = 0;

	UPROPERTY()
	uint8 ByteValue = 0;

	UPROPERTY()
	uint16 UInt16Value = 0;

	UPROPERTY()
	uint32 UInt32Value = 0;

	UPROPERTY()
	uint64 UInt64Value = 0;

	UPROPERTY(config)
	float FloatValue = 0.0f;

	UPROPERTY(globalconfig)
	double DoubleValue = 0.0;

	UPROPERTY(EditAnywhere, BlueprintReadOnly, Category = "Flags")
	bool bNativeBool = false;

	UPROPERTY(EditAnywhere, Category = "Flags")
	uint32 bBitA : 1;

	UPROPERTY(EditAnywhere, Category = "Flags")
	uint32 bBitB : 1;

	UPROPERTY(VisibleAnywhere, Category = "Flags")
	uint8 bBitC : 1;

	UPROPERTY(SaveGame)
	FName NameValue;

	UPROPERTY()
	FString StringValue;

	UPROPERTY()
	FText TextValue;

	UPROPERTY()
	EReflectionTestMode Mode = EReflectionTestMode::First;

	UPROPERTY()
	TEnumAsByte<EReflectionTestLegacy::Type> Legacy;

	UPROPERTY()
	TObjectPtr<UObject> ObjectRef;

	UPROPERTY()
	UReflectionTestBase* RawObjectRef = nullptr;

	UPROPERTY()
	TSubclassOf<UReflectionTestBase> ClassRef;

	UPROPERTY()
	UClass* RawClassRef = nullptr;

	UPROPERTY()
	TWeakObjectPtr<UObject> WeakRef;

	UPROPERTY()
	FReflectionTestPoint Point;

	UPROPERTY()
	TArray<int32> IntArray;

	UPROPERTY()
	TArray<FString> StringArray;

	UPROPERTY()
	TArray<TObjectPtr<UObject>> ObjectArray;

	UPROPERTY()
	TArray<FReflectionTestPoint> PointArray;

	UPROPERTY()
	TMap<FString, int32> StringToInt;

	UPROPERTY()
	TSet<FName> NameSet;

	UPROPERTY()
	int32 FixedArray[3];

	UFUNCTION(BlueprintCallable, Category = "Test")
	int32 AddNumbers(int32 A, int32 B);

	UFUNCTION(BlueprintPure, Category = "Test")
	FString Describe(const FString& Prefix, bool bLoud) const;

	UFUNCTION(BlueprintCallable, CallInEditor, Category = "Test")
	void SplitValue(int32 Value, int32& OutHalf, FString& OutText);

	UFUNCTION(BlueprintCallable, Category = "Test")
	static int32 Twice(int32 Value);

	UFUNCTION(BlueprintNativeEvent, Category = "Test")
	int32 NativeEvent(int32 Value);

	UFUNCTION(BlueprintImplementableEvent, Category = "Test")
	void ImplementableEvent(int32 Value);

	/** Counts calls of the functions above. */
	int32 CallCount = 0;

private:
	UPROPERTY()
	int32 PrivateValue = 42;

public:
	int32 GetPrivateValue() const { return PrivateValue; }
};

/** A class created with an FObjectInitializer constructor that makes a default subobject. */
UCLASS()
class COREUOBJECT_API UReflectionTestOwner : public UObject
{
	GENERATED_BODY()

public:
	UReflectionTestOwner(const FObjectInitializer& ObjectInitializer);

	UPROPERTY()
	TObjectPtr<UReflectionTestBase> Component;

	UPROPERTY()
	TArray<TObjectPtr<UObject>> Children;

	UPROPERTY()
	TWeakObjectPtr<UObject> WeakChild;
};

// Copyright Orvane. All Rights Reserved.

#pragma once

// Reflected types used by the object system's config tests.

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/SoftObjectPtr.h"

#include "ConfigTestTypes.generated.h"

UENUM()
enum class EConfigTestQuality : uint8
{
	Low,
	Medium,
	High,
};

UENUM()
namespace EConfigTestLevel
{
	enum Type : int
	{
		Off = 0,
		Some,
		Most,
		All,
	};
}

USTRUCT()
struct COREUOBJECT_API FConfigTestPair
{
	GENERATED_BODY()

	UPROPERTY()
	int32 Count = 0;

	UPROPERTY()
	FString Label;
};

/** A config class with a property of each kind the config files store. */
UCLASS(config = Engine, defaultconfig)
class COREUOBJECT_API UConfigTestSettings : public UObject
{
	GENERATED_BODY()

public:
	UConfigTestSettings();

	UPROPERTY(config)
	bool bFlag = false;

	UPROPERTY(config)
	int32 Count = 3;

	UPROPERTY(config)
	float Scale = 1.5f;

	UPROPERTY(config)
	FString Label;

	UPROPERTY(config)
	FName Tag;

	UPROPERTY(config)
	EConfigTestQuality Quality = EConfigTestQuality::Low;

	UPROPERTY(config)
	TArray<FString> SearchPaths;

	UPROPERTY(config)
	FConfigTestPair Pair;

	UPROPERTY(config)
	FSoftObjectPath StartupMap;

	UPROPERTY(config)
	FSoftClassPath ModeClass;

	UPROPERTY(config)
	TSoftObjectPtr<UObject> Asset;

	UPROPERTY(config)
	int32 Slots[2];

	UPROPERTY(config, meta = (ConsoleVariable = "t.ConfigTest.Switch"))
	uint32 bSwitch : 1;

	UPROPERTY(config, meta = (ConsoleVariable = "t.ConfigTest.Level"))
	TEnumAsByte<EConfigTestLevel::Type> Level;

	UPROPERTY(config, meta = (ConsoleVariable = "t.ConfigTest.Quality"))
	EConfigTestQuality CVarQuality = EConfigTestQuality::Low;

	UPROPERTY()
	int32 NotConfig = 0;
};

/** A config class used only to see its default object load the config when it is created. */
UCLASS(config = Game)
class COREUOBJECT_API UConfigTestCreatedLate : public UObject
{
	GENERATED_BODY()

public:
	UPROPERTY(config)
	int32 Value = 1;
};

/** A config class whose default object is created before the config system starts. */
UCLASS(config = Game)
class COREUOBJECT_API UConfigTestCreatedEarly : public UObject
{
	GENERATED_BODY()

public:
	UPROPERTY(config)
	int32 Value = 1;
};

/** A class that stores nothing in config files. */
UCLASS()
class COREUOBJECT_API UConfigTestPlain : public UObject
{
	GENERATED_BODY()

public:
	UPROPERTY()
	int32 Value = 0;
};

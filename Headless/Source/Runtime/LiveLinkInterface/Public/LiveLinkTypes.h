// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "HAL/PlatformTime.h"
#include "HAL/UnrealMemory.h"
#include "Misc/Guid.h"
#include "Misc/QualifiedFrameTime.h"
#include "UObject/Class.h"
#include "UObject/NoExportTypes.h"
#include "UObject/ObjectMacros.h"

#include <type_traits>

#include "LiveLinkTypes.generated.h"

/** The identifier the client gives each frame it receives, in arrival order. */
typedef int32 FLiveLinkFrameIdentifier;

/** The name of a subject: one stream of data (a camera, a character) inside the client. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkSubjectName
{
	GENERATED_BODY()

	FLiveLinkSubjectName() = default;

	FLiveLinkSubjectName(FName InName)
		: Name(InName)
	{
	}

	/** The subject's name. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FName Name;

	operator FName&() { return Name; }
	operator const FName&() const { return Name; }

	bool IsNone() const { return Name.IsNone(); }
	FString ToString() const { return Name.ToString(); }

	bool operator==(const FLiveLinkSubjectName& Other) const { return Name == Other.Name; }
	bool operator!=(const FLiveLinkSubjectName& Other) const { return Name != Other.Name; }

	friend uint32 GetTypeHash(const FLiveLinkSubjectName& Value) { return GetTypeHash(Value.Name); }
};

/** A subject of one source: the source's GUID and the subject's name. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkSubjectKey
{
	GENERATED_BODY()

	FLiveLinkSubjectKey() = default;

	FLiveLinkSubjectKey(FGuid InSource, FName InSubjectName)
		: Source(InSource)
		, SubjectName(InSubjectName)
	{
	}

	FLiveLinkSubjectKey(FGuid InSource, FLiveLinkSubjectName InSubjectName)
		: Source(InSource)
		, SubjectName(InSubjectName)
	{
	}

	/** The GUID the client gave the source that pushes this subject. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FGuid Source;

	/** The subject's name. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkSubjectName SubjectName;

	bool operator==(const FLiveLinkSubjectKey& Other) const
	{
		return SubjectName == Other.SubjectName && Source == Other.Source;
	}
	bool operator!=(const FLiveLinkSubjectKey& Other) const { return !(*this == Other); }

	friend uint32 GetTypeHash(const FLiveLinkSubjectKey& Value)
	{
		return HashCombine(GetTypeHash(Value.SubjectName), GetTypeHash(Value.Source));
	}
};

/**
 * When a frame was produced, on the engine's platform clock (FPlatformTime::Seconds): the time the source gave
 * it and the offset from the source's clock to the platform clock.
 */
USTRUCT()
struct FLiveLinkWorldTime
{
	GENERATED_BODY()

	/** Now, on the platform clock, with no offset. */
	FLiveLinkWorldTime()
		: Time(FPlatformTime::Seconds())
		, Offset(0.0)
	{
	}

	/** A time of the source's clock; the offset to the platform clock is measured now. */
	FLiveLinkWorldTime(const double InTime)
		: Time(InTime)
		, Offset(FPlatformTime::Seconds() - InTime)
	{
	}

	/** A time of the source's clock and a known offset to the platform clock. */
	explicit FLiveLinkWorldTime(const double InTime, const double InOffset)
		: Time(InTime)
		, Offset(InOffset)
	{
	}

	/** The time as the source gave it. */
	double GetSourceTime() const { return Time; }

	/** The offset from the source's clock to the platform clock. */
	double GetOffset() const { return Offset; }

	/** The time on the platform clock. */
	double GetOffsettedTime() const { return Time + Offset; }

	void SetClockOffset(double InOffset) { Offset = InOffset; }

private:
	UPROPERTY()
	double Time;

	UPROPERTY()
	double Offset;
};

/** A point in time on both of the client's clocks: the platform clock and the scene's timecode. */
USTRUCT(BlueprintType)
struct FLiveLinkTime
{
	GENERATED_BODY()

	FLiveLinkTime()
		: WorldTime(0.0)
	{
	}

	FLiveLinkTime(double InWorldTime, const FQualifiedFrameTime& InSceneTime)
		: WorldTime(InWorldTime)
		, SceneTime(InSceneTime)
	{
	}

	/** Seconds on the platform clock. */
	UPROPERTY(VisibleAnywhere, BlueprintReadOnly, Category = "LiveLink")
	double WorldTime;

	/** The timecode of the scene. */
	UPROPERTY(VisibleAnywhere, BlueprintReadOnly, Category = "LiveLink")
	FQualifiedFrameTime SceneTime;
};

/** Extra information a source attaches to a frame. */
USTRUCT(BlueprintType)
struct FLiveLinkMetaData
{
	GENERATED_BODY()

	/** Free-form values by key. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	TMap<FName, FString> StringMetaData;

	/** The frame's timecode, with the rate it is expressed in. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FQualifiedFrameTime SceneTime;
};

/** The frame data of every role: times, metadata and free-form property values. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkBaseFrameData
{
	GENERATED_BODY()

	/** When the frame was produced, on the platform clock. */
	UPROPERTY(VisibleAnywhere, Category = "LiveLink")
	FLiveLinkWorldTime WorldTime;

	/** Timecode and other values the source attached. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkMetaData MetaData;

	/** Values of the properties named by the static data's PropertyNames, in the same order. */
	UPROPERTY(VisibleAnywhere, BlueprintReadWrite, Category = "LiveLink")
	TArray<float> PropertyValues;

	/** When the client received the frame; filled in by the client. */
	UPROPERTY(VisibleAnywhere, Category = "LiveLink")
	FLiveLinkTime ArrivalTime;

	/** The identifier the client gave the frame; filled in by the client. */
	FLiveLinkFrameIdentifier FrameId = 0;

	/** The frame's time on both clocks. */
	FLiveLinkTime GetLiveLinkTime() const { return FLiveLinkTime(WorldTime.GetOffsettedTime(), MetaData.SceneTime); }
};

/** The static data of every role: the names of the free-form properties its frames carry. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkBaseStaticData
{
	GENERATED_BODY()

	/** Names of the values in each frame's PropertyValues. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	TArray<FName> PropertyNames;

	/** Reads the value of a named property from a frame; false if the name or its value is missing. */
	bool FindPropertyValue(const FLiveLinkBaseFrameData& FrameData, const FName PropertyName, float& OutValue) const;
};

/** The data of every role as handed to Blueprints. */
USTRUCT(BlueprintType)
struct FLiveLinkBaseBlueprintData
{
	GENERATED_BODY()
};

/**
 * Owns (or refers to) one instance of a struct derived from BaseType, whose exact type is known at run time
 * through its UScriptStruct. Move-only: frames change hands without copies. Cast<T>() gives access to the
 * derived type when the instance is a T or derives from it.
 */
template <typename BaseType>
class FLiveLinkBaseDataStruct
{
public:
	FLiveLinkBaseDataStruct() = default;

	/** A default-constructed instance of InType, which must derive from BaseType. */
	explicit FLiveLinkBaseDataStruct(const UScriptStruct* InType) { Allocate(InType); }

	/** Refers to an instance of InType that someone else owns and keeps alive. */
	FLiveLinkBaseDataStruct(const UScriptStruct* InType, BaseType* InData)
	{
		check(InType == nullptr || InType->IsChildOf(BaseType::StaticStruct()));
		ScriptStruct = InType;
		Memory = reinterpret_cast<uint8*>(InData);
		bOwnsMemory = false;
	}

	FLiveLinkBaseDataStruct(FLiveLinkBaseDataStruct&& InOther) { MoveFrom(InOther); }

	FLiveLinkBaseDataStruct& operator=(FLiveLinkBaseDataStruct&& InOther)
	{
		if (this != &InOther)
		{
			Reset();
			MoveFrom(InOther);
		}
		return *this;
	}

	FLiveLinkBaseDataStruct(const FLiveLinkBaseDataStruct&) = delete;
	FLiveLinkBaseDataStruct& operator=(const FLiveLinkBaseDataStruct&) = delete;

	~FLiveLinkBaseDataStruct() { Reset(); }

	/** Replaces the instance by a copy of InData, an instance of DataType. */
	template <typename DataType>
	void InitializeWith(const DataType* InData)
	{
		static_assert(std::is_base_of_v<BaseType, DataType>, "The data must derive from the wrapper's base type.");
		InitializeWith(DataType::StaticStruct(), InData);
	}

	/** Replaces the instance by a copy of InData, an instance of InOtherStruct. */
	void InitializeWith(const UScriptStruct* InOtherStruct, const BaseType* InData)
	{
		Reset();
		if (InOtherStruct != nullptr)
		{
			Allocate(InOtherStruct);
			if (InData != nullptr)
			{
				InOtherStruct->CopyScriptStruct(Memory, InData);
			}
		}
	}

	/** Replaces the instance by a copy of another wrapper's. */
	void InitializeWith(const FLiveLinkBaseDataStruct& InOther)
	{
		if (this != &InOther)
		{
			InitializeWith(InOther.GetStruct(), InOther.GetBaseData());
		}
	}

	/** A copy of the instance in new memory (FMemory::Malloc) that the caller owns; null if there is none. */
	BaseType* CloneData() const
	{
		if (!IsValid())
		{
			return nullptr;
		}
		uint8* Copy = static_cast<uint8*>(FMemory::Malloc(
			ScriptStruct->GetStructureSize(), static_cast<uint32>(FMath::Max(ScriptStruct->GetMinAlignment(), 1))));
		ScriptStruct->InitializeStruct(Copy);
		ScriptStruct->CopyScriptStruct(Copy, Memory);
		return reinterpret_cast<BaseType*>(Copy);
	}

	/** The instance as Type; null unless it is a Type or derives from it. */
	template <typename Type>
	Type* Cast()
	{
		return IsValid() && ScriptStruct->IsChildOf(Type::StaticStruct()) ? reinterpret_cast<Type*>(Memory) : nullptr;
	}

	template <typename Type>
	const Type* Cast() const
	{
		return IsValid() && ScriptStruct->IsChildOf(Type::StaticStruct()) ? reinterpret_cast<const Type*>(Memory)
																		  : nullptr;
	}

	const UScriptStruct* GetStruct() const { return ScriptStruct; }
	BaseType* GetBaseData() { return reinterpret_cast<BaseType*>(Memory); }
	const BaseType* GetBaseData() const { return reinterpret_cast<const BaseType*>(Memory); }

	/** True when there is an instance. */
	bool IsValid() const { return ScriptStruct != nullptr && Memory != nullptr; }

	/** Destroys the instance (if owned) and leaves the wrapper empty. */
	void Reset()
	{
		if (bOwnsMemory && Memory != nullptr)
		{
			ScriptStruct->DestroyStruct(Memory);
			FMemory::Free(Memory);
		}
		ScriptStruct = nullptr;
		Memory = nullptr;
		bOwnsMemory = false;
	}

	/** Same struct type and equal values. */
	bool operator==(const FLiveLinkBaseDataStruct& Other) const
	{
		if (ScriptStruct != Other.ScriptStruct)
		{
			return false;
		}
		if (!IsValid() || !Other.IsValid())
		{
			return IsValid() == Other.IsValid();
		}
		return ScriptStruct->CompareScriptStruct(Memory, Other.Memory, 0);
	}
	bool operator!=(const FLiveLinkBaseDataStruct& Other) const { return !(*this == Other); }

private:
	void Allocate(const UScriptStruct* InType)
	{
		check(InType != nullptr && InType->IsChildOf(BaseType::StaticStruct()));
		ScriptStruct = InType;
		Memory = static_cast<uint8*>(
			FMemory::Malloc(InType->GetStructureSize(), static_cast<uint32>(FMath::Max(InType->GetMinAlignment(), 1))));
		InType->InitializeStruct(Memory);
		bOwnsMemory = true;
	}

	void MoveFrom(FLiveLinkBaseDataStruct& InOther)
	{
		ScriptStruct = InOther.ScriptStruct;
		Memory = InOther.Memory;
		bOwnsMemory = InOther.bOwnsMemory;
		InOther.ScriptStruct = nullptr;
		InOther.Memory = nullptr;
		InOther.bOwnsMemory = false;
	}

	/** The instance's type. */
	const UScriptStruct* ScriptStruct = nullptr;

	/** The instance. */
	uint8* Memory = nullptr;

	/** True when the wrapper constructed the instance and destroys it. */
	bool bOwnsMemory = false;
};

/** Static data of any role. */
using FLiveLinkStaticDataStruct = FLiveLinkBaseDataStruct<FLiveLinkBaseStaticData>;

/** Frame data of any role. */
using FLiveLinkFrameDataStruct = FLiveLinkBaseDataStruct<FLiveLinkBaseFrameData>;

/** Blueprint data of any role. */
using FLiveLinkBlueprintDataStruct = FLiveLinkBaseDataStruct<FLiveLinkBaseBlueprintData>;

/** A subject's static data with one evaluated frame: what the client hands to whoever reads a subject. */
struct FLiveLinkSubjectFrameData
{
	/** The subject's static data. */
	FLiveLinkStaticDataStruct StaticData;

	/** The evaluated frame. */
	FLiveLinkFrameDataStruct FrameData;
};

/** How a subject is doing. */
UENUM(BlueprintType)
enum class ELiveLinkSubjectState : uint8
{
	/** The subject is receiving frames. */
	Connected,
	/** The subject has not received a frame for a while. */
	Unresponsive,
	/** The subject's source is gone. */
	Disconnected,
	/** The subject does not exist, is disabled or has no valid data. */
	InvalidOrDisabled,
	/** The state cannot be told. */
	Unknown,
};

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkTypes.h"
#include "Templates/SubclassOf.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "LiveLinkRole.generated.h"

/**
 * What a subject's data means (a transform, a camera...): the struct types of its static, frame and Blueprint
 * data, and the rules that data must follow. Roles derive from each other, so a camera is also a transform.
 */
UCLASS(Abstract)
class LIVELINKINTERFACE_API ULiveLinkRole : public UObject
{
	GENERATED_BODY()

public:
	/** The struct of the role's static data. Every concrete role overrides this. */
	virtual UScriptStruct* GetStaticDataStruct() const;

	/** The struct of the role's frame data. Every concrete role overrides this. */
	virtual UScriptStruct* GetFrameDataStruct() const;

	/** The struct of the role's Blueprint data. Every concrete role overrides this. */
	virtual UScriptStruct* GetBlueprintDataStruct() const;

	/** Fills OutBlueprintData from a subject's static data and frame. Every concrete role overrides this. */
	virtual bool InitializeBlueprintData(
		const FLiveLinkSubjectFrameData& InSourceData, FLiveLinkBlueprintDataStruct& OutBlueprintData) const;

	/** The role's name for people. Every concrete role overrides this. */
	virtual FText GetDisplayName() const;

	/** True if static data is of the role's static struct (or derives from it). */
	virtual bool IsStaticDataValid(const FLiveLinkStaticDataStruct& InStaticData, bool& bOutShouldLogWarning) const;

	/** True if a frame is of the role's frame struct (or derives from it) and matches the static data. */
	virtual bool IsFrameDataValid(const FLiveLinkStaticDataStruct& InStaticData,
		const FLiveLinkFrameDataStruct& InFrameData, bool& bOutShouldLogWarning) const;
};

/** A subject as something reads it: its name and the role it is read as. */
USTRUCT(BlueprintType)
struct LIVELINKINTERFACE_API FLiveLinkSubjectRepresentation
{
	GENERATED_BODY()

	/** The subject's name. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	FLiveLinkSubjectName Subject;

	/** The role the subject is read as. */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "LiveLink")
	TSubclassOf<ULiveLinkRole> Role;

	bool operator==(const FLiveLinkSubjectRepresentation& Other) const
	{
		return Subject == Other.Subject && Role == Other.Role;
	}
	bool operator!=(const FLiveLinkSubjectRepresentation& Other) const { return !(*this == Other); }

	friend uint32 GetTypeHash(const FLiveLinkSubjectRepresentation& Value)
	{
		return HashCombine(GetTypeHash(Value.Subject), GetTypeHash(Value.Role));
	}
};

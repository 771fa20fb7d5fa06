// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "LiveLinkRole.h"
#include "LiveLinkSourceSettings.h"
#include "LiveLinkSubjectSettings.h"
#include "LiveLinkTypes.h"
#include "LiveLinkVirtualSubject.h"
#include "Templates/SubclassOf.h"
#include "UObject/ObjectMacros.h"
#include "UObject/ObjectPtr.h"

#include "LiveLinkPresetTypes.generated.h"

/** A source as a preset remembers it: enough to create it again with the same identity. */
USTRUCT()
struct LIVELINKINTERFACE_API FLiveLinkSourcePreset
{
	GENERATED_BODY()

	/** The source's identity; the re-created source gets the same GUID, so subject keys still match. */
	UPROPERTY(VisibleAnywhere, Category = "Source")
	FGuid Guid;

	/** A copy of the source's settings, whose factory and connection string create the source again. */
	UPROPERTY(VisibleAnywhere, Instanced, Category = "Source")
	TObjectPtr<ULiveLinkSourceSettings> Settings;

	/** The kind of source, as the source named it. */
	UPROPERTY(VisibleAnywhere, Category = "Source")
	FText SourceType;
};

/** A subject as a preset remembers it. */
USTRUCT()
struct LIVELINKINTERFACE_API FLiveLinkSubjectPreset
{
	GENERATED_BODY()

	/** The subject's source and name. */
	UPROPERTY(VisibleAnywhere, Category = "Subject")
	FLiveLinkSubjectKey Key;

	/** The subject's role. */
	UPROPERTY(VisibleAnywhere, Category = "Subject")
	TSubclassOf<ULiveLinkRole> Role;

	/** A copy of the subject's settings. */
	UPROPERTY(VisibleAnywhere, Instanced, Category = "Subject")
	TObjectPtr<ULiveLinkSubjectSettings> Settings;

	/** A copy of the virtual subject, for virtual subjects. */
	UPROPERTY(VisibleAnywhere, Instanced, Category = "Subject")
	TObjectPtr<ULiveLinkVirtualSubject> VirtualSubject;

	/** Whether the subject is enabled. */
	UPROPERTY(VisibleAnywhere, Category = "Subject")
	bool bEnabled = false;
};

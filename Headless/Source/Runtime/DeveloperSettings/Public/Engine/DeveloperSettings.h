// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"
#include "UObject/ObjectMacros.h"

#include "DeveloperSettings.generated.h"

/**
 * The base of settings classes that the settings editor lists on its own: each is one section of a container
 * ("Project" or "Editor") under a category, and stores its values in its class's config file.
 */
UCLASS(Abstract)
class DEVELOPERSETTINGS_API UDeveloperSettings : public UObject
{
	GENERATED_BODY()

public:
	UDeveloperSettings(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/** "Editor" for classes stored in the editor's own config files, "Project" for the rest. */
	virtual FName GetContainerName() const;

	/** The high-level group of the section (Engine, Game, Editor...). */
	virtual FName GetCategoryName() const;

	/** The unique name of the section; the class name unless a subclass chose one. */
	virtual FName GetSectionName() const;

#if WITH_EDITOR
	/** The section's display name: the class's DisplayName metadata, or its name made readable. */
	virtual FText GetSectionText() const;

	/** The section's description: the class's tooltip. */
	virtual FText GetSectionDescription() const;
#endif

	/** Whether the settings editor lists the class by itself (true unless a subclass registers it by hand). */
	virtual bool SupportsAutoRegistration() const
	{
		return true;
	}

protected:
	/** Set by subclasses in their constructor; see GetCategoryName. */
	FName CategoryName;

	/** Set by subclasses in their constructor; see GetSectionName. */
	FName SectionName;
};

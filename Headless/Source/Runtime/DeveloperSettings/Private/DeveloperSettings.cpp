// Copyright Orvane. All Rights Reserved.

#include "Engine/DeveloperSettings.h"
#include "UObject/Class.h"

UDeveloperSettings::UDeveloperSettings(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

FName UDeveloperSettings::GetContainerName() const
{
	// Settings kept in the editor's own files belong to the editor preferences, everything else to the project.
	const FName ConfigName = GetClass()->ClassConfigName;
	if (ConfigName == FName(TEXT("EditorSettings")) || ConfigName == FName(TEXT("EditorPerProjectUserSettings")))
	{
		return FName(TEXT("Editor"));
	}
	return FName(TEXT("Project"));
}

FName UDeveloperSettings::GetCategoryName() const
{
	return CategoryName;
}

FName UDeveloperSettings::GetSectionName() const
{
	return SectionName.IsNone() ? GetClass()->GetFName() : SectionName;
}

#if WITH_EDITOR
FText UDeveloperSettings::GetSectionText() const
{
	return GetClass()->GetDisplayNameText();
}

FText UDeveloperSettings::GetSectionDescription() const
{
	return GetClass()->GetToolTipText();
}
#endif

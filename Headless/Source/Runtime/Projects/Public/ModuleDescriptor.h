// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"

/** The kinds of host a module may be loaded into, as written in a descriptor's "Type" field. */
namespace EHostType
{
	enum Type
	{
		Runtime,
		RuntimeNoCommandlet,
		RuntimeAndProgram,
		CookedOnly,
		UncookedOnly,
		Developer,
		DeveloperTool,
		Editor,
		EditorNoCommandlet,
		EditorAndProgram,
		Program,
		ServerOnly,
		ClientOnly,
		ClientOnlyNoCommandlet,
		Max
	};

	/** Parses a descriptor's text; returns Max when the text names no host type. */
	PROJECTS_API EHostType::Type FromString(const TCHAR* Text);
	PROJECTS_API const TCHAR* ToString(const EHostType::Type Value);
} // namespace EHostType

/** When, during engine start-up, a module is loaded. */
namespace ELoadingPhase
{
	enum Type
	{
		EarliestPossible,
		PostConfigInit,
		PostSplashScreen,
		PreEarlyLoadingScreen,
		PreLoadingScreen,
		PreDefault,
		Default,
		PostDefault,
		PostEngineInit,
		None,
		Max
	};

	/** Parses a descriptor's text; returns Max when the text names no phase. */
	PROJECTS_API ELoadingPhase::Type FromString(const TCHAR* Text);
	PROJECTS_API const TCHAR* ToString(const ELoadingPhase::Type Value);
} // namespace ELoadingPhase

/** One entry of the "Modules" list of a plug-in or project descriptor. */
struct PROJECTS_API FModuleDescriptor
{
	/** Name of the module. */
	FName Name;

	/** Which hosts load the module. */
	EHostType::Type Type = EHostType::Runtime;

	/** When the module is loaded. */
	ELoadingPhase::Type LoadingPhase = ELoadingPhase::Default;

	/** Platforms the module may be loaded on; empty means all. */
	TArray<FString> PlatformAllowList;

	/** Whether an editor process loads a module of this type. */
	bool IsLoadedInEditor() const;
};

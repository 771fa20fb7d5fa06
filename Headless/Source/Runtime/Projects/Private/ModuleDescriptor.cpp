// Copyright Orvane. All Rights Reserved.

#include "ModuleDescriptor.h"

namespace
{
	const TCHAR* const HostTypeNames[] = {TEXT("Runtime"), TEXT("RuntimeNoCommandlet"), TEXT("RuntimeAndProgram"),
		TEXT("CookedOnly"), TEXT("UncookedOnly"), TEXT("Developer"), TEXT("DeveloperTool"), TEXT("Editor"),
		TEXT("EditorNoCommandlet"), TEXT("EditorAndProgram"), TEXT("Program"), TEXT("ServerOnly"), TEXT("ClientOnly"),
		TEXT("ClientOnlyNoCommandlet")};
	static_assert(UE_ARRAY_COUNT(HostTypeNames) == EHostType::Max);

	const TCHAR* const LoadingPhaseNames[] = {TEXT("EarliestPossible"), TEXT("PostConfigInit"),
		TEXT("PostSplashScreen"), TEXT("PreEarlyLoadingScreen"), TEXT("PreLoadingScreen"), TEXT("PreDefault"),
		TEXT("Default"), TEXT("PostDefault"), TEXT("PostEngineInit"), TEXT("None")};
	static_assert(UE_ARRAY_COUNT(LoadingPhaseNames) == ELoadingPhase::Max);

	template <int32 Count>
	int32 FindName(const TCHAR* const (&Names)[Count], const TCHAR* Text)
	{
		for (int32 Index = 0; Index < Count; ++Index)
		{
			if (FCString::Stricmp(Names[Index], Text) == 0)
			{
				return Index;
			}
		}
		return Count;
	}
} // namespace

EHostType::Type EHostType::FromString(const TCHAR* Text)
{
	return static_cast<EHostType::Type>(FindName(HostTypeNames, Text));
}

const TCHAR* EHostType::ToString(const EHostType::Type Value)
{
	return Value < EHostType::Max ? HostTypeNames[Value] : TEXT("Max");
}

ELoadingPhase::Type ELoadingPhase::FromString(const TCHAR* Text)
{
	return static_cast<ELoadingPhase::Type>(FindName(LoadingPhaseNames, Text));
}

const TCHAR* ELoadingPhase::ToString(const ELoadingPhase::Type Value)
{
	return Value < ELoadingPhase::Max ? LoadingPhaseNames[Value] : TEXT("Max");
}

bool FModuleDescriptor::IsLoadedInEditor() const
{
	switch (Type)
	{
		case EHostType::Runtime:
		case EHostType::RuntimeNoCommandlet:
		case EHostType::RuntimeAndProgram:
		case EHostType::UncookedOnly:
		case EHostType::Developer:
		case EHostType::DeveloperTool:
		case EHostType::Editor:
		case EHostType::EditorNoCommandlet:
		case EHostType::EditorAndProgram:
		case EHostType::ClientOnly:
		case EHostType::ClientOnlyNoCommandlet:
			return true;
		default:
			return false;
	}
}

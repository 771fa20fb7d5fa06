// Copyright Orvane. All Rights Reserved.

#include "LaunchEngineLoop.h"

#include "Containers/Ticker.h"
#include "Editor.h"
#include "Editor/UnrealEdEngine.h"
#include "Engine/Engine.h"
#include "HAL/FileManager.h"
#include "HAL/PlatformTime.h"
#include "Interfaces/IPluginManager.h"
#include "Interfaces/IProjectManager.h"
#include "Misc/App.h"
#include "Misc/CommandLine.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/CoreDelegates.h"
#include "Misc/PackageName.h"
#include "Misc/Parse.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "PluginDescriptor.h"
#include "UObject/Class.h"
#include "UObject/DefaultObjectConfig.h"
#include "UObject/Package.h"
#include "UnrealEdGlobals.h"

DEFINE_LOG_CATEGORY_STATIC(LogEngineLoop, Log, All);

FEngineLoop GEngineLoop;

namespace
{
	/** Resolves the command line's project argument: a .uproject file, or a folder holding exactly one. */
	FString FindProjectFile(const FString& ProjectArgument)
	{
		const FString FullPath = FPaths::ConvertRelativePathToFull(ProjectArgument);
		if (FPaths::GetExtension(FullPath) == TEXT("uproject"))
		{
			return FPaths::FileExists(FullPath) ? FullPath : FString();
		}
		TArray<FString> ProjectFiles;
		IFileManager::Get().FindFiles(ProjectFiles, *(FullPath / TEXT("*.uproject")), true, false);
		return ProjectFiles.Num() == 1 ? FullPath / ProjectFiles[0] : FString();
	}

	/**
	 * Mounts each enabled plug-in's content at "/<Name>/". A plug-in whose content the headless engine
	 * provides in its own Content/<Name>/ folder is mounted there instead, since the plug-in's real
	 * Content/ folder is for the real engine's asset files only.
	 */
	void MountPluginContent()
	{
		for (const TSharedRef<IPlugin>& Plugin : IPluginManager::Get().GetEnabledPlugins())
		{
			if (!Plugin->CanContainContent())
			{
				continue;
			}
			const FString HeadlessContentDir = FPaths::EngineContentDir() + Plugin->GetName() + TEXT("/");
			const FString ContentDir =
				FPaths::DirectoryExists(HeadlessContentDir) ? HeadlessContentDir : Plugin->GetContentDir() + TEXT("/");
			FPackageName::RegisterMountPoint(Plugin->GetMountedAssetPath(), ContentDir);
		}
	}

	/** The engine modules the editor loads before any plug-in, in dependency order. */
	const TCHAR* const EditorStartupModules[] = {TEXT("CoreUObject"), TEXT("DeveloperSettings"), TEXT("Engine"),
		TEXT("EngineSettings"), TEXT("AssetRegistry"), TEXT("Projects"), TEXT("CinematicCamera"), TEXT("UnrealEd"),
		TEXT("SettingsEditor")};

	/** The engine class the editor runs with unless the engine config names another. */
	const TCHAR* const DefaultEditorEngineClass = TEXT("/Script/UnrealEd.UnrealEdEngine");

	const ELoadingPhase::Type StartupPhases[] = {ELoadingPhase::EarliestPossible, ELoadingPhase::PostConfigInit,
		ELoadingPhase::PostSplashScreen, ELoadingPhase::PreEarlyLoadingScreen, ELoadingPhase::PreLoadingScreen,
		ELoadingPhase::PreDefault, ELoadingPhase::Default, ELoadingPhase::PostDefault, ELoadingPhase::PostEngineInit};
} // namespace

int32 FEngineLoop::PreInit(const TCHAR* CmdLine)
{
	FCommandLine::Set(CmdLine);
	const TCHAR* Stream = CmdLine;
	const FString ProjectArgument = FParse::Token(Stream, false);
	if (ProjectArgument.IsEmpty() || ProjectArgument.StartsWith(TEXT("-")))
	{
		UE_LOG(LogEngineLoop, Error,
			TEXT("No project was given: the command line must start with a .uproject file or its folder."));
		return 1;
	}
	const FString ProjectFile = FindProjectFile(ProjectArgument);
	if (ProjectFile.IsEmpty())
	{
		UE_LOG(
			LogEngineLoop, Error, TEXT("'%s' is neither a .uproject file nor a folder holding one."), *ProjectArgument);
		return 1;
	}
	FPaths::SetProjectFilePath(ProjectFile);
	FApp::SetProjectName(*FPaths::GetBaseFilename(ProjectFile));
	if (!IProjectManager::Get().LoadProjectFile(ProjectFile))
	{
		return 1;
	}
	GIsEditor = true;
	FConfigCacheIni::InitializeConfigSystem();
	UE::CoreUObject::LoadConfigForExistingDefaultObjects();
	return 0;
}

int32 FEngineLoop::Init()
{
	FModuleManager::Get().LoadModuleChecked(TEXT("Core"));
	for (const TCHAR* Module : EditorStartupModules)
	{
		FModuleManager::Get().LoadModuleChecked(Module);
	}

	IPluginManager& PluginManager = IPluginManager::Get();
	PluginManager.RefreshPluginsList();
	MountPluginContent();
	bool bSuccess = true;
	for (const ELoadingPhase::Type Phase : StartupPhases)
	{
		if (Phase == ELoadingPhase::PostEngineInit && !InitEngine())
		{
			return 1;
		}
		bSuccess &= PluginManager.LoadModulesForEnabledPlugins(Phase);
		RecordLoadedPluginModules(Phase);
	}
	GEngine->Start();

	GIsRunning = true;
	LastRealTime = FPlatformTime::Seconds();
	FCoreDelegates::OnPostEngineInit.Broadcast();
	FCoreDelegates::OnFEngineLoopInitComplete.Broadcast();
	return bSuccess ? 0 : 1;
}

bool FEngineLoop::InitEngine()
{
	FString EngineClassPath = DefaultEditorEngineClass;
	if (GConfig)
	{
		GConfig->GetString(TEXT("/Script/Engine.Engine"), TEXT("EditorEngine"), EngineClassPath, GEngineIni);
	}
	UClass* const EngineClass = LoadClass<UEngine>(nullptr, *EngineClassPath);
	if (!EngineClass || !EngineClass->IsChildOf(UEditorEngine::StaticClass()))
	{
		UE_LOG(LogEngineLoop, Error, TEXT("The editor engine class '%s' does not exist or is not an editor engine."),
			*EngineClassPath);
		return false;
	}
	GEngine = NewObject<UEngine>(GetTransientPackage(), EngineClass);
	GEngine->AddToRoot();
	GEditor = Cast<UEditorEngine>(GEngine);
	GUnrealEd = Cast<UUnrealEdEngine>(GEngine);
	GEngine->Init(this);
	return true;
}

void FEngineLoop::RecordLoadedPluginModules(ELoadingPhase::Type Phase)
{
	for (const TSharedRef<IPlugin>& Plugin : IPluginManager::Get().GetEnabledPlugins())
	{
		for (const FModuleDescriptor& Module : Plugin->GetDescriptor().Modules)
		{
			if (Module.LoadingPhase == Phase && FModuleManager::Get().IsModuleLoaded(Module.Name))
			{
				LoadedPluginModules.AddUnique(Module.Name);
			}
		}
	}
}

void FEngineLoop::Tick()
{
	const double Now = FPlatformTime::Seconds();
	const double DeltaSeconds = FApp::UseFixedTimeStep() ? FApp::GetFixedDeltaTime() : Now - LastRealTime;
	LastRealTime = Now;

	FApp::UpdateLastTime();
	FApp::SetDeltaTime(DeltaSeconds);
	FApp::SetCurrentTime(FApp::GetCurrentTime() + DeltaSeconds);

	FCoreDelegates::OnBeginFrame.Broadcast();
	FCoreDelegates::OnSamplingInput.Broadcast();
	FTSTicker::GetCoreTicker().Tick(static_cast<float>(DeltaSeconds));
	if (GEngine)
	{
		GEngine->Tick(static_cast<float>(DeltaSeconds), false);
	}
	FCoreDelegates::OnEndFrame.Broadcast();
	++GFrameCounter;
}

void FEngineLoop::Exit()
{
	GIsRunning = false;
	FCoreDelegates::OnEnginePreExit.Broadcast();
	if (GEngine)
	{
		GEngine->PreExit();
	}
	FModuleManager::Get().UnloadModulesAtShutdown();
	LoadedPluginModules.Reset();
	if (GEngine)
	{
		GEngine->RemoveFromRoot();
		GEngine->MarkAsGarbage();
	}
	GEngine = nullptr;
	GEditor = nullptr;
	GUnrealEd = nullptr;
}

// Copyright Orvane. All Rights Reserved.

#include "OrvaneCameraManager.h"

#include "Camera/CameraComponent.h"
#include "CineCameraActor.h"
#include "Containers/Ticker.h"
#include "Editor.h"
#include "Editor/EditorEngine.h"
#include "Engine/Engine.h"
#include "Engine/RendererSettings.h"
#include "Engine/World.h"
#include "EngineUtils.h"
#include "GameFramework/Actor.h"
#include "HAL/FileManager.h"
#include "ISettingsEditorModule.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Materials/MaterialInterface.h"
#include "Misc/ConfigCacheIni.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "Modules/ModuleManager.h"
#include "OrvaneLiveLinkHelper.h"
#include "TimerManager.h"
#include "UObject/Package.h"
#include "UObject/SoftObjectPath.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

TWeakObjectPtr<AActor> FOrvaneCameraManager::LastCreatedCamera;

namespace
{
	const TCHAR* const CameraClassPath = TEXT("/Orvane/Orvane_VP_Camera.Orvane_VP_Camera_C");
	const TCHAR* const GameModeClassPath = TEXT("/Orvane/Orvane_GM.Orvane_GM_C");
	const TCHAR* const MaskMaterialPath = TEXT("/Orvane/Materials/Orvane_MI_MaskStencil");
	const TCHAR* const GameMapsSettingsClassPath = TEXT("/Script/EngineSettings.GameMapsSettings");

	/** The Blueprint variables of the camera that bind it to a preset; "Set LiveLink Preset" is its enable switch. */
	const TCHAR* const PresetVariableName = TEXT("LiveLinkPreset");
	const TCHAR* const PresetEnableVariableName = TEXT("Set LiveLink Preset");

	/** The frame buffer format that carries alpha: 10bit RGB, 2bit alpha. */
	constexpr EDefaultBackBufferPixelFormat::Type AlphaPixelFormat = EDefaultBackBufferPixelFormat::DBBPF_A2B10G10R10;
	static_assert(AlphaPixelFormat == 4, "Alpha-ready projects store the frame buffer format 4");

	/** Deferred steps wait this long, so that the setup has returned and the editor has drawn a frame first. */
	constexpr float DeferredStepDelaySeconds = 1.0f;

	FString MakePresetObjectPath(const FString& PresetName)
	{
		return FString::Printf(TEXT("/Game/Orvane/%s.%s"), *PresetName, *PresetName);
	}

	FString MakePresetPackagePath(const FString& PresetName)
	{
		return FString::Printf(TEXT("/Game/Orvane/%s"), *PresetName);
	}

	/** The level being edited, or null while the editor has none. */
	UWorld* GetEditorWorld()
	{
		return GEditor ? GEditor->GetEditorWorldContext(false).World() : nullptr;
	}

	/** A reflected property of the class or one of its super classes; Blueprint variable names ignore case. */
	template <typename PropertyType>
	PropertyType* FindPropertyByName(const UClass* Class, const TCHAR* Name)
	{
		const FName PropertyName(Name);
		for (TFieldIterator<PropertyType> It(Class, EFieldIteratorFlags::IncludeSuper); It; ++It)
		{
			if (It->GetFName() == PropertyName)
			{
				return *It;
			}
		}
		return nullptr;
	}

	/** Both renderer settings that alpha output needs hold their alpha values. */
	bool IsAlphaReady(const URendererSettings& Settings)
	{
		return Settings.bEnableAlphaChannelInPostProcessing &&
			   Settings.DefaultBackBufferPixelFormat == AlphaPixelFormat;
	}

	/**
	 * Turns the renderer settings alpha-ready and saves them when that changed anything: into the settings' own
	 * configuration file and into the project's default one.
	 * @return whether a setting changed.
	 */
	bool MakeRendererSettingsAlphaReady()
	{
		URendererSettings* Settings = GetMutableDefault<URendererSettings>();
		if (!Settings)
		{
			return false;
		}

		bool bSettingsChanged = false;
		if (!Settings->bEnableAlphaChannelInPostProcessing)
		{
			Settings->bEnableAlphaChannelInPostProcessing = true;
			bSettingsChanged = true;
		}
		if (Settings->DefaultBackBufferPixelFormat != AlphaPixelFormat)
		{
			Settings->DefaultBackBufferPixelFormat = AlphaPixelFormat;
			bSettingsChanged = true;
		}

		if (bSettingsChanged)
		{
			Settings->SaveConfig(CPF_Config);
			Settings->SaveConfig(CPF_Config, *Settings->GetDefaultConfigFilename());
		}
		return bSettingsChanged;
	}

	void ShowSetupResultOnScreen(bool bSuccess)
	{
		if (!GEngine)
		{
			return;
		}
		const FVector2D TextScale(1.0f, 1.0f);
		if (bSuccess)
		{
			GEngine->AddOnScreenDebugMessage(
				-1, 10.0f, FColor::Green, TEXT("Orvane Complete Setup Successful!"), true, TextScale);
		}
		else
		{
			GEngine->AddOnScreenDebugMessage(
				-1, 8.0f, FColor::Red, TEXT("Orvane Setup Failed - check console"), true, TextScale);
		}
	}

	/** Renderer settings take effect only after a restart, which the editor then offers. */
	void RequestEditorRestart()
	{
		FModuleManager::GetModuleChecked<ISettingsEditorModule>("SettingsEditor").OnApplicationRestartRequired();
	}

	/**
	 * Writes one setting of a settings object into its default configuration file; the whole object when the class
	 * has no property of that name.
	 */
	void PersistSetting(UObject* Settings, const TCHAR* PropertyName)
	{
		if (FProperty* Property = FindFProperty<FProperty>(Settings->GetClass(), FName(PropertyName, FNAME_Find)))
		{
			Settings->UpdateSinglePropertyInConfigFile(Property, Settings->GetDefaultConfigFilename());
		}
		else
		{
			Settings->TryUpdateDefaultConfigFile(FString(), true);
		}
	}

	/** Writes every changed configuration file to disk and keeps the files cached. */
	void FlushConfiguration()
	{
		GConfig->Flush(false, FString());
	}

	/** Takes the flags that keep an object alive and saved away from it and starts its destruction. */
	void MakeTransientAndBeginDestroy(UObject* Object)
	{
		Object->SetFlags(RF_Transient);
		Object->ClearFlags(RF_Public | RF_Standalone);
		Object->ConditionalBeginDestroy();
	}

	/** Deletes a package file, read-only or not; nothing happens when it is already gone. */
	void DeletePackageFile(const FString& Filename)
	{
		IFileManager::Get().Delete(*Filename, false, true, false);
	}

	/**
	 * The short name of the project's default Live Link preset, or an empty string when there is none or it does not
	 * load.
	 */
	FString GetDefaultPresetName()
	{
		ULiveLinkSettings* Settings = GetMutableDefault<ULiveLinkSettings>();
		if (!Settings)
		{
			return FString();
		}
		if (Settings->DefaultLiveLinkPreset.IsNull())
		{
			UE_LOG(LogTemp, Warning, TEXT("No default LiveLink preset is set"));
			return FString();
		}

		const ULiveLinkPreset* Preset = Settings->DefaultLiveLinkPreset.LoadSynchronous();
		if (!Preset)
		{
			UE_LOG(LogTemp, Warning, TEXT("Failed to load default LiveLink preset"));
			return FString();
		}

		const FString Name = Preset->GetName();
		if (!Name.IsEmpty())
		{
			UE_LOG(LogTemp, Warning, TEXT("Found default LiveLink preset: %s"), *Name);
		}
		return Name;
	}
} // namespace

bool FOrvaneCameraManager::CreateCompleteSetup(const FString& Endpoint, const FString& PresetName, bool bRenderAlpha)
{
	// The game mode is written even when the rest of the setup fails.
	SetDefaultGameMode();

	bool bSuccess = false;
	bool bSettingsChanged = false;
	// The preset is passed empty: the deferred step saves it and then binds it to the last created camera.
	if (CreateLiveLinkSourceAndPreset(Endpoint, PresetName) && CreateOrvaneCamera(FString(), bRenderAlpha))
	{
		bSuccess = true;
		if (bRenderAlpha)
		{
			bSettingsChanged = MakeRendererSettingsAlphaReady();
		}
	}

	ShowSetupResultOnScreen(bSuccess);
	if (bSettingsChanged)
	{
		RequestEditorRestart();
	}
	return bSuccess;
}

bool FOrvaneCameraManager::CreateOrvaneCameraOnly()
{
	const URendererSettings* RendererSettings = GetDefault<URendererSettings>();
	const bool bRenderAlpha = RendererSettings && IsAlphaReady(*RendererSettings);

	if (!CreateOrvaneCamera(FString(), bRenderAlpha))
	{
		return false;
	}

	const FString PresetName = GetDefaultPresetName();
	if (!PresetName.IsEmpty())
	{
		ApplyPresetToLastCreatedCamera(PresetName);
		UE_LOG(LogTemp, Warning, TEXT("Applied default LiveLink preset: %s"), *PresetName);
	}
	else
	{
		UE_LOG(LogTemp, Warning, TEXT("No default LiveLink preset found, created camera without preset"));
	}

	// The camera already carries the material; the deferred step adds it a second time, as the setup always has.
	if (bRenderAlpha)
	{
		ApplyPostProcessMaterialToLastCreatedCamera(MaskMaterialPath);
	}
	return true;
}

AActor* FOrvaneCameraManager::GetLastCreatedCamera()
{
	return LastCreatedCamera.Get();
}

bool FOrvaneCameraManager::HasDefaultPreset()
{
	ULiveLinkSettings* Settings = GetMutableDefault<ULiveLinkSettings>();
	if (!Settings || Settings->DefaultLiveLinkPreset.IsNull())
	{
		return false;
	}
	return Settings->DefaultLiveLinkPreset.LoadSynchronous() != nullptr;
}

bool FOrvaneCameraManager::CreateOrvaneCamera(const FString& PresetName, bool bApplyAlphaMaterial)
{
	RemoveExistingOrvaneCameras();

	UClass* CameraClass = LoadObject<UClass>(nullptr, CameraClassPath);
	if (!CameraClass)
	{
		UE_LOG(LogTemp, Error, TEXT("Failed to load Blueprint class"));
		return false;
	}

	UWorld* World = GetEditorWorld();
	if (!World)
	{
		UE_LOG(LogTemp, Error, TEXT("Failed to get world context"));
		return false;
	}

	AActor* Camera =
		World->SpawnActor(CameraClass, &FVector::ZeroVector, &FRotator::ZeroRotator, FActorSpawnParameters());
	if (!Camera)
	{
		UE_LOG(LogTemp, Error, TEXT("Failed to spawn camera"));
		return false;
	}

	LastCreatedCamera = Camera;
	UE_LOG(LogTemp, Warning, TEXT("Orvane Camera created successfully"));

	if (!PresetName.IsEmpty() && !SetLiveLinkPresetOnCamera(Camera, PresetName))
	{
		return false;
	}
	if (bApplyAlphaMaterial)
	{
		return SetPostProcessMaterialOnCamera(Camera, MaskMaterialPath);
	}
	return true;
}

bool FOrvaneCameraManager::CreateLiveLinkSourceAndPreset(const FString& Endpoint, const FString& PresetName)
{
	if (!UOrvaneLiveLinkHelper::RemoveAllOrvaneSources())
	{
		UE_LOG(LogTemp, Warning, TEXT("Failed to remove existing LiveLink sources"));
	}
	if (!UOrvaneLiveLinkHelper::RemoveExistingPreset(PresetName))
	{
		UE_LOG(LogTemp, Warning, TEXT("Failed to remove existing preset"));
	}
	if (!UOrvaneLiveLinkHelper::CreateOrvaneSource(Endpoint))
	{
		UE_LOG(LogTemp, Error, TEXT("Failed to create LiveLink source"));
		return false;
	}

	// The preset captures the client once the source has settled; nothing keeps the handle, so nothing cancels it.
	FTSTicker::GetCoreTicker().AddTicker(FTickerDelegate::CreateLambda(
											 [PresetName](float)
											 {
												 UE_LOG(LogTemp, Warning, TEXT("Delayed Preset creation"));
												 if (!UOrvaneLiveLinkHelper::SaveLiveLinkPreset(PresetName))
												 {
													 UE_LOG(LogTemp, Warning, TEXT("LiveLink preset creation failed"));
													 return false;
												 }
												 UE_LOG(LogTemp, Warning, TEXT("LiveLink preset created successfully"));
												 SetLiveLinkStartupPreset(PresetName);
												 SetLiveLinkPresetOnCamera(LastCreatedCamera.Get(), PresetName);
												 return false;
											 }),
		DeferredStepDelaySeconds);

	UE_LOG(LogTemp, Warning, TEXT("LiveLink source created successfully"));
	return true;
}

bool FOrvaneCameraManager::SetLiveLinkPresetOnCamera(AActor* Camera, const FString& PresetName)
{
	if (!Camera)
	{
		UE_LOG(LogTemp, Error, TEXT("Camera is null"));
		return false;
	}

	const FString PresetPath = MakePresetPackagePath(PresetName);
	UObject* Preset = LoadObject<UObject>(nullptr, *PresetPath);
	if (!Preset)
	{
		UE_LOG(LogTemp, Error, TEXT("Could not load preset: %s"), *PresetPath);
		return false;
	}

	bool bPresetBound = false;
	if (FObjectPropertyBase* PresetProperty =
			FindPropertyByName<FObjectPropertyBase>(Camera->GetClass(), PresetVariableName))
	{
		PresetProperty->SetObjectPropertyValue_InContainer(Camera, Preset);
		bPresetBound = true;
	}
	else
	{
		UE_LOG(LogTemp, Error, TEXT("Could not find LiveLink preset property"));
	}

	FBoolProperty* EnableProperty = FindPropertyByName<FBoolProperty>(Camera->GetClass(), PresetEnableVariableName);
	if (!EnableProperty)
	{
		UE_LOG(LogTemp, Error, TEXT("Could not find preset enable property"));
		Camera->RerunConstructionScripts();
		return false;
	}

	EnableProperty->SetPropertyValue_InContainer(Camera, true);
	// The Blueprint's construction applies the new values.
	Camera->RerunConstructionScripts();
	if (bPresetBound)
	{
		UE_LOG(LogTemp, Warning, TEXT("LiveLink preset applied to camera successfully"));
	}
	return bPresetBound;
}

void FOrvaneCameraManager::ApplyPresetToLastCreatedCamera(const FString& PresetName)
{
	const FTimerDelegate BindPreset = FTimerDelegate::CreateLambda(
		[PresetName]()
		{
			if (LastCreatedCamera.IsValid())
			{
				SetLiveLinkPresetOnCamera(LastCreatedCamera.Get(), PresetName);
			}
		});

	if (GEditor)
	{
		FTimerHandle TimerHandle;
		GEditor->GetTimerManager()->SetTimer(TimerHandle, BindPreset, DeferredStepDelaySeconds, false);
	}
}

void FOrvaneCameraManager::RemoveExistingOrvaneCameras()
{
	UWorld* World = GetEditorWorld();
	if (!World)
	{
		UE_LOG(LogTemp, Error, TEXT("Failed to get world context for camera cleanup"));
		return;
	}

	UClass* CameraClass = Cast<UClass>(
		StaticLoadObject(UClass::StaticClass(), nullptr, CameraClassPath, nullptr, LOAD_None, nullptr, true));
	if (!CameraClass)
	{
		UE_LOG(LogTemp, Warning, TEXT("Could not load Orvane camera class for cleanup"));
	}
	else
	{
		// Collect first: destroying actors while the iterator walks them would skip some.
		TArray<AActor*> Cameras;
		for (TActorIterator<AActor> It(World, CameraClass); It; ++It)
		{
			if (IsValid(*It))
			{
				Cameras.Add(*It);
			}
		}

		for (AActor* Camera : Cameras)
		{
			if (IsValid(Camera))
			{
				UE_LOG(LogTemp, Warning, TEXT("Removing existing Orvane camera: %s"), *Camera->GetName());
				World->DestroyActor(Camera, false, true);
			}
		}

		if (Cameras.Num() > 0)
		{
			UE_LOG(LogTemp, Warning, TEXT("Removed %d existing Orvane cameras"), Cameras.Num());
		}
	}

	LastCreatedCamera.Reset();
}

void FOrvaneCameraManager::RemoveExistingLiveLinkSources()
{
	UOrvaneLiveLinkHelper::RemoveAllOrvaneSources();
}

void FOrvaneCameraManager::RemoveExistingPreset(const FString& PresetName)
{
	const FString PresetPaths[] = {MakePresetObjectPath(PresetName), MakePresetPackagePath(PresetName)};
	for (const FString& PresetPath : PresetPaths)
	{
		// Only what is in memory: a preset that was never loaded has nothing to destroy but its file.
		if (UObject* Found = StaticFindObject(UObject::StaticClass(), nullptr, *PresetPath))
		{
			ClearStartupPresetIfMatching(Found);
			CleanupPresetAsset(Found, PresetPath);
		}
	}

	CollectGarbage(RF_NoFlags, true);
	FlushAsyncLoading(INDEX_NONE);
}

void FOrvaneCameraManager::CleanupPresetAsset(UObject* Preset, const FString& PresetPath)
{
	if (UPackage* Package = Preset->GetPackage())
	{
		MakeTransientAndBeginDestroy(Package);
	}
	MakeTransientAndBeginDestroy(Preset);
	DeletePresetFile(PresetPath);
}

void FOrvaneCameraManager::DeletePresetFile(const FString& PresetPath)
{
	FString PackagePath = PresetPath;
	int32 DotIndex = INDEX_NONE;
	if (PackagePath.FindLastChar(TEXT('.'), DotIndex))
	{
		PackagePath.LeftInline(DotIndex);
	}

	FString Filename;
	if (FPackageName::DoesPackageExist(PackagePath, &Filename, true))
	{
		DeletePackageFile(Filename);
		return;
	}

	// Packages the resolver does not know may still have a file in the project's content folder.
	FString RelativePath = PackagePath;
	RelativePath.RemoveFromStart(TEXT("/Game/"), ESearchCase::IgnoreCase);
	const FString ContentFilename = FPaths::Combine(FPaths::ProjectContentDir(), RelativePath + TEXT(".uasset"));
	if (FPaths::FileExists(ContentFilename))
	{
		DeletePackageFile(ContentFilename);
	}
}

void FOrvaneCameraManager::ClearStartupPresetIfMatching(UObject* Preset)
{
	// A class is found by its short name only through FindFirstObject: a bare name given to StaticFindObject
	// without an outer names a package.
	UClass* SettingsClass = FindFirstObject<UClass>(TEXT("LiveLinkSettings"), EFindFirstObjectOptions::NativeFirst);
	if (!SettingsClass)
	{
		return;
	}
	UObject* Settings = SettingsClass->GetDefaultObject();
	if (!Settings)
	{
		return;
	}

	const FName PropertyName(TEXT("DefaultLiveLinkPreset"), FNAME_Find);
	FSoftObjectProperty* StartupPresetProperty =
		PropertyName.IsNone() ? nullptr : FindFProperty<FSoftObjectProperty>(SettingsClass, PropertyName);
	if (!StartupPresetProperty || StartupPresetProperty->GetObjectPropertyValue_InContainer(Settings) != Preset)
	{
		return;
	}

	StartupPresetProperty->SetObjectPropertyValue_InContainer(Settings, nullptr);

	// Persisted only when the settings class offers a reflected SaveConfig; otherwise the change stays in memory.
	if (UFunction* SaveConfigFunction =
			Settings->GetClass()->FindFunctionByName(FName(TEXT("SaveConfig")), EIncludeSuperFlag::IncludeSuper))
	{
		Settings->ProcessEvent(SaveConfigFunction, nullptr);
	}
}

bool FOrvaneCameraManager::SetDefaultGameMode()
{
	UClass* SettingsClass = LoadObject<UClass>(nullptr, GameMapsSettingsClassPath);
	checkf(SettingsClass, TEXT("The engine always has the class %s"), GameMapsSettingsClassPath);
	UObject* Settings = SettingsClass->GetDefaultObject();

	UClass* GameModeClass = LoadObject<UClass>(nullptr, GameModeClassPath);

	FStructProperty* GameModeProperty =
		FindFProperty<FStructProperty>(SettingsClass, FName(TEXT("GlobalDefaultGameMode"), FNAME_Find));
	checkf(GameModeProperty, TEXT("The game maps settings always have a GlobalDefaultGameMode"));
	// A missing game mode Blueprint gives the empty path, which clears the setting.
	const FSoftClassPath GameModePath(GameModeClass);
	GameModeProperty->CopyCompleteValue(GameModeProperty->ContainerPtrToValuePtr<void>(Settings), &GameModePath);

	PersistSetting(Settings, TEXT("GlobalDefaultGameMode"));
	FlushConfiguration();

	UE_LOG(LogTemp, Warning, TEXT("Default game mode set to: %s"), *GameModePath.ToString());
	return true;
}

bool FOrvaneCameraManager::SetLiveLinkStartupPreset(const FString& PresetName)
{
	ULiveLinkSettings* Settings = GetMutableDefault<ULiveLinkSettings>();
	if (!Settings)
	{
		return false;
	}

	// The setting keeps the path that loaded, as it stands: the object path, or the package path after the fallback.
	FString LoadedPath = MakePresetObjectPath(PresetName);
	if (!StaticLoadObject(UObject::StaticClass(), nullptr, *LoadedPath))
	{
		LoadedPath = MakePresetPackagePath(PresetName);
		if (!StaticLoadObject(UObject::StaticClass(), nullptr, *LoadedPath))
		{
			return false;
		}
	}

	Settings->DefaultLiveLinkPreset = TSoftObjectPtr<ULiveLinkPreset>(FSoftObjectPath(LoadedPath));
	Settings->MarkPackageDirty();

	PersistSetting(Settings, TEXT("DefaultLiveLinkPreset"));
	FlushConfiguration();

	UE_LOG(LogTemp, Warning, TEXT("LiveLink startup preset configured"));
	return true;
}

bool FOrvaneCameraManager::SetPostProcessMaterialOnCamera(AActor* Camera, const FString& MaterialPath)
{
	const auto Fail = []()
	{
		UE_LOG(LogTemp, Warning, TEXT("Failed to set camera post process material for alpha rendering"));
		return false;
	};

	if (!Camera || MaterialPath.IsEmpty())
	{
		return Fail();
	}
	const ACineCameraActor* CineCamera = Cast<ACineCameraActor>(Camera);
	if (!CineCamera)
	{
		return Fail();
	}
	UCameraComponent* CameraComponent = CineCamera->GetCameraComponent();
	if (!CameraComponent)
	{
		return Fail();
	}
	UObject* Material = LoadObject<UMaterialInterface>(nullptr, *MaterialPath);
	if (!Material || !Material->IsA(UMaterialInterface::StaticClass()))
	{
		return Fail();
	}

	// Every call adds one more entry; the component's overall blend weight stays as it is.
	CameraComponent->PostProcessSettings.WeightedBlendables.Array.Add(FWeightedBlendable(1.0f, Material));
	return true;
}

void FOrvaneCameraManager::ApplyPostProcessMaterialToLastCreatedCamera(const FString& MaterialPath)
{
	const FTimerDelegate ApplyMaterial = FTimerDelegate::CreateLambda(
		[MaterialPath]()
		{
			if (LastCreatedCamera.IsValid())
			{
				SetPostProcessMaterialOnCamera(LastCreatedCamera.Get(), MaterialPath);
			}
		});

	if (GEditor)
	{
		FTimerHandle TimerHandle;
		GEditor->GetTimerManager()->SetTimer(TimerHandle, ApplyMaterial, DeferredStepDelaySeconds, false);
	}
}

// Copyright Orvane. All Rights Reserved.

#include "Features/IModularFeatures.h"
#include "ILiveLinkModule.h"
#include "LiveLinkClient.h"
#include "LiveLinkLog.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSettings.h"
#include "Misc/CoreDelegates.h"
#include "Templates/UniquePtr.h"
#include "UObject/SoftObjectPtr.h"

/** Creates the Live Link client at start-up, registers it, and applies the project's default preset. */
class FLiveLinkModule : public ILiveLinkModule
{
public:
	virtual void StartupModule() override
	{
		LiveLinkClient = MakeUnique<FLiveLinkClient>();
		IModularFeatures::Get().RegisterModularFeature(ILiveLinkClient::ModularFeatureName, LiveLinkClient.Get());
		EngineLoopInitCompleteHandle =
			FCoreDelegates::OnFEngineLoopInitComplete.AddRaw(this, &FLiveLinkModule::ApplyDefaultPreset);
	}

	virtual void ShutdownModule() override
	{
		FCoreDelegates::OnFEngineLoopInitComplete.Remove(EngineLoopInitCompleteHandle);
		if (!LiveLinkClient)
		{
			return;
		}
		IModularFeatures::Get().UnregisterModularFeature(ILiveLinkClient::ModularFeatureName, LiveLinkClient.Get());
		LiveLinkClient->Shutdown();
		LiveLinkClient.Reset();
	}

private:
	/** Loads the preset the project names (synchronously, as nothing else runs yet) and applies it. */
	void ApplyDefaultPreset()
	{
		const TSoftObjectPtr<ULiveLinkPreset>& PresetPath = GetDefault<ULiveLinkSettings>()->DefaultLiveLinkPreset;
		if (PresetPath.IsNull())
		{
			return;
		}
		ULiveLinkPreset* Preset = PresetPath.LoadSynchronous();
		if (Preset == nullptr)
		{
			UE_LOG(LogLiveLink, Warning, TEXT("The default Live Link preset '%s' could not be loaded."),
				*PresetPath.ToString());
			return;
		}
		UE_LOG(LogLiveLink, Log, TEXT("Applying the default Live Link preset '%s'."), *PresetPath.ToString());
		Preset->ApplyToClientLatent();
	}

	TUniquePtr<FLiveLinkClient> LiveLinkClient;
	FDelegateHandle EngineLoopInitCompleteHandle;
};

IMPLEMENT_MODULE(FLiveLinkModule, LiveLink)

// Copyright Orvane. All Rights Reserved.

#include "OrvaneSetupTestScope.h"

#include "CineCameraActor.h"
#include "Engine/RendererSettings.h"
#include "OrvaneCameraManagerTestUtilities.h"

#if WITH_DEV_AUTOMATION_TESTS

void FOrvaneSetupTestScope::Begin(const TArray<FString>& InPresetNames)
{
	PresetNames = InPresetNames;
	Settings.Capture();
	Log = MakeUnique<FOrvaneLogCapture>();
}

void FOrvaneSetupTestScope::End()
{
	Log.Reset();
	// Every cine camera the test spawned, the plug-in's and the plain ones alike.
	OrvaneCameraManagerTests::DestroyActorsOfClass(ACineCameraActor::StaticClass());
	OrvaneCameraManagerTests::RemoveSourcesAndPresets(PresetNames);
	Settings.Restore();
}

void FOrvaneSetupTestScope::SetRendererAlphaReady(bool bAlphaChannel, uint8 BackBufferPixelFormat)
{
	URendererSettings* Renderer = GetMutableDefault<URendererSettings>();
	Renderer->bEnableAlphaChannelInPostProcessing = bAlphaChannel;
	Renderer->DefaultBackBufferPixelFormat = static_cast<EDefaultBackBufferPixelFormat::Type>(BackBufferPixelFormat);
}

#endif

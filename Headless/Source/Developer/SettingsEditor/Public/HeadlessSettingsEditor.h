// Copyright Orvane. All Rights Reserved.

#pragma once

// What the headless settings editor lets its host and tests observe. This header belongs to the headless engine
// alone: plug-in code never includes it.

#include "CoreMinimal.h"

namespace UE::SettingsEditor::Headless
{
	/** How many times ISettingsEditorModule::OnApplicationRestartRequired was called since the last reset. */
	SETTINGSEDITOR_API int32 GetApplicationRestartRequestCount();

	/** The application time (FApp::GetCurrentTime) of each of those calls, oldest first. */
	SETTINGSEDITOR_API TArray<double> GetApplicationRestartRequestTimes();

	/** Forgets the recorded restart requests. */
	SETTINGSEDITOR_API void ResetApplicationRestartRequests();

	/** Whether a restart callback is set (ISettingsEditorModule::SetRestartApplicationCallback). */
	SETTINGSEDITOR_API bool IsRestartApplicationCallbackBound();
} // namespace UE::SettingsEditor::Headless

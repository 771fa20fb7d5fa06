// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Delegates/Delegate.h"
#include "Modules/ModuleInterface.h"
#include "Templates/SharedPointer.h"

class ISettingsContainer;
class ISettingsEditorModel;
class SWidget;
class UDeveloperSettings;

/** Asks whether a settings object should be registered with the settings editor. */
DECLARE_DELEGATE_RetVal_OneParam(bool, FShouldRegisterSettingsDelegate, UDeveloperSettings*);

/** Interface for settings editor modules. */
class ISettingsEditorModule : public IModuleInterface
{
public:
	/** Virtual destructor. */
	virtual ~ISettingsEditorModule() {}

	/** Creates a settings editor widget for a view model. */
	virtual TSharedRef<SWidget> CreateEditor(const TSharedRef<ISettingsEditorModel>& Model) = 0;

	/** Creates a view model for the settings editor widget of a settings container. */
	virtual TSharedRef<ISettingsEditorModel> CreateModel(const TSharedRef<ISettingsContainer>& SettingsContainer) = 0;

	/**
	 * Called when the settings have been changed such that an application restart is required for them to be
	 * fully applied.
	 */
	virtual void OnApplicationRestartRequired() = 0;

	/** Sets the delegate that should be called when a settings editor needs to restart the application. */
	virtual void SetRestartApplicationCallback(FSimpleDelegate InRestartApplicationDelegate) = 0;

	/** Sets the delegate that decides whether a settings object is registered with the settings editor. */
	virtual void SetShouldRegisterSettingCallback(FShouldRegisterSettingsDelegate InShouldRegisterSettingDelegate) = 0;
};

// Copyright Orvane. All Rights Reserved.

#include "HeadlessSettingsEditor.h"
#include "ISettingsEditorModule.h"
#include "Misc/App.h"
#include "Modules/ModuleManager.h"

DEFINE_LOG_CATEGORY_STATIC(LogSettingsEditor, Log, All);

namespace UE::SettingsEditor::Private
{
	/** What the module was told, kept apart from the module object so that the host can read it at any time. */
	struct FState
	{
		/** The application time of each restart request, oldest first. */
		TArray<double> RestartRequestTimes;

		/** Restarts the application when the user accepts a restart. */
		FSimpleDelegate RestartApplicationDelegate;

		/** Decides which settings objects are listed. */
		FShouldRegisterSettingsDelegate ShouldRegisterSettingDelegate;
	};

	FState& GetState()
	{
		static FState State;
		return State;
	}
} // namespace UE::SettingsEditor::Private

/**
 * The settings editor of the headless editor. There is no widget system to build an editor or its view model
 * with, so those calls stop the program; restart requests are recorded, where the editor would show a
 * notification offering to restart.
 */
class FSettingsEditorModule : public ISettingsEditorModule
{
public:
	//~ ISettingsEditorModule interface

	virtual TSharedRef<SWidget> CreateEditor(const TSharedRef<ISettingsEditorModel>& Model) override
	{
		// A reference to a widget cannot be empty, and no widget can be made: nothing sensible can be returned.
		UE_LOG(LogSettingsEditor, Fatal,
			TEXT("ISettingsEditorModule::CreateEditor: the headless editor has no widget system to build a settings "
				 "editor with."));
	}

	virtual TSharedRef<ISettingsEditorModel> CreateModel(
		const TSharedRef<ISettingsContainer>& SettingsContainer) override
	{
		UE_LOG(LogSettingsEditor, Fatal,
			TEXT("ISettingsEditorModule::CreateModel: the headless editor has no widget system to build a settings "
				 "editor model for."));
	}

	virtual void OnApplicationRestartRequired() override
	{
		UE::SettingsEditor::Private::GetState().RestartRequestTimes.Add(FApp::GetCurrentTime());
	}

	virtual void SetRestartApplicationCallback(FSimpleDelegate InRestartApplicationDelegate) override
	{
		UE::SettingsEditor::Private::GetState().RestartApplicationDelegate = MoveTemp(InRestartApplicationDelegate);
	}

	virtual void SetShouldRegisterSettingCallback(
		FShouldRegisterSettingsDelegate InShouldRegisterSettingDelegate) override
	{
		UE::SettingsEditor::Private::GetState().ShouldRegisterSettingDelegate =
			MoveTemp(InShouldRegisterSettingDelegate);
	}
};

IMPLEMENT_MODULE(FSettingsEditorModule, SettingsEditor)

namespace UE::SettingsEditor::Headless
{
	int32 GetApplicationRestartRequestCount()
	{
		return UE::SettingsEditor::Private::GetState().RestartRequestTimes.Num();
	}

	TArray<double> GetApplicationRestartRequestTimes()
	{
		return UE::SettingsEditor::Private::GetState().RestartRequestTimes;
	}

	void ResetApplicationRestartRequests()
	{
		UE::SettingsEditor::Private::GetState().RestartRequestTimes.Reset();
	}

	bool IsRestartApplicationCallbackBound()
	{
		return UE::SettingsEditor::Private::GetState().RestartApplicationDelegate.IsBound();
	}
} // namespace UE::SettingsEditor::Headless

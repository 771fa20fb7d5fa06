// Copyright Orvane. All Rights Reserved.

#include "EngineTestPrinters.h"
#include "HeadlessSettingsEditor.h"
#include "ISettingsEditorModule.h"
#include "Misc/App.h"
#include "Modules/ModuleManager.h"

#include <gtest/gtest.h>

// The module only declares the widget system's types, which do not exist in the headless engine; the tests
// define empty ones so that they have something to pass to the calls that need them.
class ISettingsContainer
{
public:
	virtual ~ISettingsContainer() = default;
};
class ISettingsEditorModel
{
public:
	virtual ~ISettingsEditorModel() = default;
};

namespace
{
	namespace Headless = UE::SettingsEditor::Headless;

	class FRestartRequestTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			Module = &FModuleManager::LoadModuleChecked<ISettingsEditorModule>(TEXT("SettingsEditor"));
			Headless::ResetApplicationRestartRequests();
			SavedTime = FApp::GetCurrentTime();
		}

		void TearDown() override
		{
			Headless::ResetApplicationRestartRequests();
			Module->SetRestartApplicationCallback(FSimpleDelegate());
			FApp::SetCurrentTime(SavedTime);
		}

		ISettingsEditorModule* Module = nullptr;
		double SavedTime = 0.0;
	};
} // namespace

TEST_F(FRestartRequestTest, TheModuleIsFoundByNameOnceLoaded)
{
	EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("SettingsEditor")));
	ISettingsEditorModule& Found = FModuleManager::GetModuleChecked<ISettingsEditorModule>(TEXT("SettingsEditor"));
	EXPECT_EQ(&Found, Module);
	EXPECT_EQ(FModuleManager::Get().GetModule(TEXT("SettingsEditor")), static_cast<IModuleInterface*>(Module));
}

TEST_F(FRestartRequestTest, EachRestartRequestIsCountedWithTheApplicationTimeOfTheCall)
{
	EXPECT_EQ(Headless::GetApplicationRestartRequestCount(), 0);
	EXPECT_EQ(Headless::GetApplicationRestartRequestTimes().Num(), 0);

	FApp::SetCurrentTime(12.5);
	FModuleManager::GetModuleChecked<ISettingsEditorModule>(TEXT("SettingsEditor")).OnApplicationRestartRequired();
	FApp::SetCurrentTime(14.25);
	Module->OnApplicationRestartRequired();
	Module->OnApplicationRestartRequired();

	EXPECT_EQ(Headless::GetApplicationRestartRequestCount(), 3);
	const TArray<double> Times = Headless::GetApplicationRestartRequestTimes();
	ASSERT_EQ(Times.Num(), 3);
	EXPECT_DOUBLE_EQ(Times[0], 12.5);
	EXPECT_DOUBLE_EQ(Times[1], 14.25);
	EXPECT_DOUBLE_EQ(Times[2], 14.25);

	Headless::ResetApplicationRestartRequests();
	EXPECT_EQ(Headless::GetApplicationRestartRequestCount(), 0);
	EXPECT_EQ(Headless::GetApplicationRestartRequestTimes().Num(), 0);
	Module->OnApplicationRestartRequired();
	EXPECT_EQ(Headless::GetApplicationRestartRequestCount(), 1);
}

TEST_F(FRestartRequestTest, ARestartRequestDoesNotRestartByItself)
{
	EXPECT_FALSE(Headless::IsRestartApplicationCallbackBound());
	int32 Restarts = 0;
	Module->SetRestartApplicationCallback(FSimpleDelegate::CreateLambda(
		[&Restarts]()
		{
			++Restarts;
		}));
	EXPECT_TRUE(Headless::IsRestartApplicationCallbackBound());

	// The editor only offers a restart; the callback runs when the user accepts it.
	Module->OnApplicationRestartRequired();
	EXPECT_EQ(Restarts, 0);
	EXPECT_EQ(Headless::GetApplicationRestartRequestCount(), 1);

	Module->SetRestartApplicationCallback(FSimpleDelegate());
	EXPECT_FALSE(Headless::IsRestartApplicationCallbackBound());
}

TEST_F(FRestartRequestTest, BuildingAnEditorWidgetOrModelStopsTheProgramNamingTheCall)
{
	GTEST_FLAG_SET(death_test_style, "threadsafe");
	const TSharedRef<ISettingsEditorModel> Model = MakeShared<ISettingsEditorModel>();
	const TSharedRef<ISettingsContainer> Container = MakeShared<ISettingsContainer>();
	EXPECT_DEATH(Module->CreateEditor(Model), "ISettingsEditorModule::CreateEditor: the headless editor has no widget");
	EXPECT_DEATH(
		Module->CreateModel(Container), "ISettingsEditorModule::CreateModel: the headless editor has no widget");
}

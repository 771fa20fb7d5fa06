// Copyright Orvane. All Rights Reserved.

#include "Modules/ModuleManager.h"
#include "Containers/StringConv.h"
#include "CoreGlobals.h"
#include "EngineTestPrinters.h"
#include "HAL/FileManager.h"
#include "Misc/OutputDevice.h"
#include "Misc/OutputDeviceRedirector.h"
#include "Misc/Paths.h"

#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{
	/** What the test modules did, in order: "Startup A", "PreUnload B", "Shutdown C"... */
	std::vector<std::string> GModuleEvents;

	class FRecordingModule : public IModuleInterface
	{
	public:
		explicit FRecordingModule(const char* InName)
			: Name(InName)
		{
		}
		virtual void StartupModule() override { GModuleEvents.push_back(std::string("Startup ") + Name); }
		virtual void PreUnloadCallback() override { GModuleEvents.push_back(std::string("PreUnload ") + Name); }
		virtual void ShutdownModule() override { GModuleEvents.push_back(std::string("Shutdown ") + Name); }

	private:
		const char* Name;
	};

	class FTestModuleA : public FRecordingModule
	{
	public:
		FTestModuleA()
			: FRecordingModule("A")
		{
		}
	};

	class FTestModuleB : public FRecordingModule
	{
	public:
		FTestModuleB()
			: FRecordingModule("B")
		{
		}
	};

	/** Loads A while starting, as a module loads the modules it depends on. */
	class FTestModuleC : public FRecordingModule
	{
	public:
		FTestModuleC()
			: FRecordingModule("C")
		{
		}
		virtual void StartupModule() override
		{
			FModuleManager::Get().LoadModuleChecked(TEXT("TestModuleA"));
			FRecordingModule::StartupModule();
		}
	};

	/** Not shut down by UnloadModulesAtShutdown. */
	class FTestModuleManual : public FRecordingModule
	{
	public:
		FTestModuleManual()
			: FRecordingModule("Manual")
		{
		}
		virtual bool SupportsAutomaticShutdown() override { return false; }
	};

	/** Keeps the warnings logged while it is installed. */
	class FWarningCapture : public FOutputDevice
	{
	public:
		FWarningCapture() { GLog->AddOutputDevice(this); }
		virtual ~FWarningCapture() override { GLog->RemoveOutputDevice(this); }

		virtual void Serialize(const TCHAR* V, ELogVerbosity::Type Verbosity, const FName& Category) override
		{
			if (Verbosity == ELogVerbosity::Warning)
			{
				Warnings.push_back(ToUtf8(Category.ToString()) + ": " + ToUtf8(V));
			}
		}

		std::vector<std::string> Warnings;
	};

	class FModuleManagerTest : public ::testing::Test
	{
	protected:
		void SetUp() override
		{
			FModuleManager::Get().UnloadModulesAtShutdown();
			FModuleManager::Get().UnloadModule(TEXT("TestModuleManual"));
			GModuleEvents.clear();
		}

		void TearDown() override
		{
			FModuleManager::Get().UnloadModulesAtShutdown();
			FModuleManager::Get().UnloadModule(TEXT("TestModuleManual"));
		}
	};
} // namespace

IMPLEMENT_MODULE(FTestModuleA, TestModuleA)
static FStaticallyLinkedModuleRegistrant<FTestModuleB> GRegistrantB(TEXT("TestModuleB"));
static FStaticallyLinkedModuleRegistrant<FTestModuleC> GRegistrantC(TEXT("TestModuleC"));
static FStaticallyLinkedModuleRegistrant<FTestModuleManual> GRegistrantManual(TEXT("TestModuleManual"));

TEST_F(FModuleManagerTest, LoadModuleStartsTheModuleOnce)
{
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("TestModuleA")));
	EXPECT_EQ(FModuleManager::GetModulePtr<FTestModuleA>(TEXT("TestModuleA")), nullptr);

	IModuleInterface* First = FModuleManager::Get().LoadModule(TEXT("TestModuleA"));
	IModuleInterface* Second = FModuleManager::Get().LoadModule(TEXT("TestModuleA"));

	ASSERT_NE(First, nullptr);
	EXPECT_EQ(First, Second);
	EXPECT_EQ(GModuleEvents, (std::vector<std::string>{"Startup A"}));
	EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("TestModuleA")));
	EXPECT_EQ(FModuleManager::GetModulePtr<FTestModuleA>(TEXT("TestModuleA")), First);
	EXPECT_EQ(&FModuleManager::GetModuleChecked<FTestModuleA>(TEXT("TestModuleA")), First);
	EXPECT_EQ(&FModuleManager::LoadModuleChecked<FTestModuleA>(TEXT("testmodulea")), First);
	EXPECT_EQ(GModuleEvents.size(), 1u);
}

TEST_F(FModuleManagerTest, UnloadModuleShutsTheModuleDown)
{
	int32 UnloadedEvents = 0;
	const FDelegateHandle Handle = FModuleManager::Get().OnModulesChanged().AddLambda(
		[&UnloadedEvents](FName Name, EModuleChangeReason Reason)
		{
			if (Name == FName(TEXT("TestModuleB")) && Reason == EModuleChangeReason::ModuleUnloaded)
			{
				++UnloadedEvents;
			}
		});

	ASSERT_NE(FModuleManager::LoadModulePtr<FTestModuleB>(TEXT("TestModuleB")), nullptr);
	EXPECT_TRUE(FModuleManager::Get().UnloadModule(TEXT("TestModuleB")));
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("TestModuleB")));
	EXPECT_EQ(FModuleManager::Get().GetModule(TEXT("TestModuleB")), nullptr);
	EXPECT_FALSE(FModuleManager::Get().UnloadModule(TEXT("TestModuleB")));
	EXPECT_EQ(GModuleEvents, (std::vector<std::string>{"Startup B", "Shutdown B"}));
	EXPECT_EQ(UnloadedEvents, 1);

	FModuleManager::Get().OnModulesChanged().Remove(Handle);
}

TEST_F(FModuleManagerTest, ShutdownUnloadsInReverseLoadOrderAfterAllPreUnloadCallbacks)
{
	FModuleManager::Get().LoadModuleChecked(TEXT("TestModuleB"));
	FModuleManager::Get().LoadModuleChecked(TEXT("TestModuleC"));
	FModuleManager::Get().LoadModuleChecked(TEXT("TestModuleManual"));

	FModuleManager::Get().UnloadModulesAtShutdown();

	// C loaded A during its own startup, so A finished first and is shut down after C.
	EXPECT_EQ(
		GModuleEvents, (std::vector<std::string>{"Startup B", "Startup A", "Startup C", "Startup Manual", "PreUnload C",
						   "PreUnload A", "PreUnload B", "Shutdown C", "Shutdown A", "Shutdown B"}));
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("TestModuleA")));
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("TestModuleC")));
	EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("TestModuleManual")));
}

TEST_F(FModuleManagerTest, CoreRegistersItselfAsAModule)
{
	EXPECT_TRUE(FModuleManager::Get().ModuleExists(TEXT("Core")));
	EXPECT_NE(FModuleManager::Get().LoadModule(TEXT("Core")), nullptr);
	EXPECT_TRUE(FModuleManager::Get().IsModuleLoaded(TEXT("Core")));

	TArray<FName> Found;
	FModuleManager::Get().FindModules(TEXT("TestModule*"), Found);
	EXPECT_EQ(Found.Num(), 4);
	EXPECT_TRUE(Found.Contains(FName(TEXT("TestModuleC"))));
}

TEST_F(FModuleManagerTest, AnUnknownModuleIsNullWithAWarning)
{
	FWarningCapture Capture;
	EModuleLoadResult Result = EModuleLoadResult::Success;

	EXPECT_EQ(FModuleManager::Get().LoadModuleWithFailureReason(TEXT("NoSuchModule"), Result), nullptr);
	EXPECT_EQ(Result, EModuleLoadResult::FileNotFound);
	EXPECT_FALSE(FModuleManager::Get().IsModuleLoaded(TEXT("NoSuchModule")));
	EXPECT_FALSE(FModuleManager::Get().ModuleExists(TEXT("NoSuchModule")));
	ASSERT_EQ(Capture.Warnings.size(), 1u);
	EXPECT_NE(Capture.Warnings[0].find("LogModuleManager: "), std::string::npos);
	EXPECT_NE(Capture.Warnings[0].find("'NoSuchModule'"), std::string::npos);
	EXPECT_NE(Capture.Warnings[0].find("libUnrealEditor-NoSuchModule.so"), std::string::npos);
}

TEST_F(FModuleManagerTest, LibrariesInAddedBinariesDirectoriesAreOpened)
{
	char Template[] = "/tmp/ModuleManagerTest-XXXXXX";
	ASSERT_NE(::mkdtemp(Template), nullptr);
	const FString Directory = UTF8_TO_TCHAR(Template);
	FModuleManager::Get().AddBinariesDirectory(*Directory, false);

	// A file that is not a shared library: the operating system refuses it.
	FILE* Garbage = ::fopen(TCHAR_TO_UTF8(*(Directory / TEXT("libUnrealEditor-Garbage.so"))), "w");
	ASSERT_NE(Garbage, nullptr);
	::fputs("not a library", Garbage);
	::fclose(Garbage);

	FWarningCapture Capture;
	EModuleLoadResult Result = EModuleLoadResult::Success;
	EXPECT_TRUE(FModuleManager::Get().ModuleExists(TEXT("Garbage")));
	EXPECT_EQ(FModuleManager::Get().LoadModuleWithFailureReason(TEXT("Garbage"), Result), nullptr);
	EXPECT_EQ(Result, EModuleLoadResult::CouldNotBeLoadedByOS);

	// A real shared library that implements no module of that name.
	const FString LibraryCopy = Directory / TEXT("libUnrealEditor-NotAModule.so");
	ASSERT_EQ(IFileManager::Get().Copy(*LibraryCopy, TEXT("/usr/lib/x86_64-linux-gnu/libm.so.6")), (uint32)COPY_OK);
	EXPECT_EQ(FModuleManager::Get().LoadModuleWithFailureReason(TEXT("NotAModule"), Result), nullptr);
	EXPECT_EQ(Result, EModuleLoadResult::FailedToInitialize);

	ASSERT_EQ(Capture.Warnings.size(), 2u);
	EXPECT_NE(Capture.Warnings[0].find("'Garbage'"), std::string::npos);
	EXPECT_NE(Capture.Warnings[1].find("'NotAModule'"), std::string::npos);

	IFileManager::Get().DeleteDirectory(*Directory, false, true);
}

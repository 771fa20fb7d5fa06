// Copyright Orvane. All Rights Reserved.

#include "CoreMinimal.h"
#include "ILiveLinkClient.h"
#include "ILiveLinkSource.h"
#include "LiveLinkPreset.h"
#include "LiveLinkSourceSettings.h"
#include "Misc/AutomationTest.h"
#include "Misc/PackageName.h"
#include "Misc/Paths.h"
#include "OrvaneLiveLinkHelper.h"
#include "OrvaneTrackingSourceFactory.h"
#include "OrvaneTrackingSourceSettings.h"
#include "Tests/OrvaneTrackingTestUtilities.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UObjectHash.h"

#if WITH_DEV_AUTOMATION_TESTS

namespace OrvaneLiveLinkHelperSpec
{
	/** A source of another kind, which the helper must leave alone. */
	class FOtherSource : public ILiveLinkSource
	{
	public:
		virtual void ReceiveClient(ILiveLinkClient* InClient, FGuid InSourceGuid) override {}
		virtual bool IsSourceStillValid() const override { return true; }
		virtual bool RequestSourceShutdown() override { return true; }
		virtual FText GetSourceType() const override { return FText::FromString(TEXT("Other")); }
		virtual FText GetSourceMachineName() const override { return FText::FromString(TEXT("elsewhere")); }
		virtual FText GetSourceStatus() const override { return FText::FromString(TEXT("Fine")); }
	};

	/** The tracking sources of the client. */
	TArray<FGuid> GetTrackingSources(ILiveLinkClient& Client)
	{
		TArray<FGuid> Result;
		for (const FGuid& SourceGuid : Client.GetSources())
		{
			const ULiveLinkSourceSettings* Settings = Client.GetSourceSettings(SourceGuid);
			if (Settings && Settings->IsA<UOrvaneTrackingSourceSettings>())
			{
				Result.Add(SourceGuid);
			}
		}
		return Result;
	}

	FString GetPresetFilename(const FString& Name)
	{
		return FPackageName::LongPackageNameToFilename(
			FString(TEXT("/Game/Orvane/")) + Name, FPackageName::GetAssetPackageExtension());
	}

	/** Drops a loaded package and its objects from memory, leaving its file alone. */
	void UnloadPackage(const FString& PackageName)
	{
		if (UPackage* Package = FindPackage(nullptr, *PackageName))
		{
			ForEachObjectWithOuter(Package,
				[](UObject* Object)
				{
					Object->ClearFlags(RF_Public | RF_Standalone);
					Object->MarkAsGarbage();
				});
			Package->MarkAsGarbage();
		}
		CollectGarbage(GARBAGE_COLLECTION_KEEPFLAGS);
	}
} // namespace OrvaneLiveLinkHelperSpec

BEGIN_DEFINE_SPEC(FOrvaneLiveLinkHelperSpec, "Orvane.LiveLink.Helper",
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::EngineFilter)
	ILiveLinkClient* Client = nullptr;
	uint16 Port = 0;
	FString Endpoint;
END_DEFINE_SPEC(FOrvaneLiveLinkHelperSpec)

void FOrvaneLiveLinkHelperSpec::Define()
{
	using namespace OrvaneLiveLinkHelperSpec;

	BeforeEach(
		[this]()
		{
			Client = OrvaneTrackingTests::GetClient();
			TestNotNull(TEXT("Live Link client"), Client);
			if (Client)
			{
				TestTrue(TEXT("No sources left over"), OrvaneTrackingTests::RemoveAllSources(*Client));
			}
			Port = OrvaneTrackingTests::FindFreeUdpPort();
			Endpoint = FString::Printf(TEXT("127.0.0.1:%d"), Port);
		});

	AfterEach(
		[this]()
		{
			if (Client)
			{
				OrvaneTrackingTests::RemoveAllSources(*Client);
			}
		});

	Describe("CreateOrvaneSource",
		[this]()
		{
			It("adds one tracking source that listens on the endpoint",
				[this]()
				{
					TestTrue(TEXT("Created"), UOrvaneLiveLinkHelper::CreateOrvaneSource(Endpoint));
					const TArray<FGuid> Sources = GetTrackingSources(*Client);
					if (TestEqual(TEXT("One tracking source"), Sources.Num(), 1))
					{
						TestEqual(TEXT("Machine name"), Client->GetSourceMachineName(Sources[0]).ToString(), Endpoint);
						TestTrue(TEXT("Binds"), OrvaneTrackingTests::TickClientUntil(*Client, 1.0,
													[this, &Sources]()
													{
														return Client->IsSourceStillValid(Sources[0]);
													}));
					}
				});

			It("refuses text that is not an endpoint before anything is created, quoting it in an error",
				[this]()
				{
					const TCHAR* BadTexts[] = {TEXT(""), TEXT("0.0.0.0"), TEXT("0.0.0.0:0"), TEXT("0.0.0.0:70000"),
						TEXT("300.1.1.1:9001"), TEXT("studio-tracker:9001"), TEXT("0.0.0.0:9001/udp")};
					for (const TCHAR* Text : BadTexts)
					{
						AddExpectedErrorPlain(FString::Printf(TEXT("Invalid tracking endpoint '%s'"), Text),
							EAutomationExpectedErrorFlags::Contains, 1);
						TestFalse(FString::Printf(TEXT("'%s' refused"), Text),
							UOrvaneLiveLinkHelper::CreateOrvaneSource(Text));
					}
					TestEqual(TEXT("No source created"), Client->GetSources(true).Num(), 0);
				});
		});

	Describe("RemoveAllOrvaneSources",
		[this]()
		{
			It("removes every tracking source and only those",
				[this]()
				{
					const FGuid OtherGuid = Client->AddSource(MakeShared<FOtherSource>());
					TestTrue(TEXT("First"), UOrvaneLiveLinkHelper::CreateOrvaneSource(Endpoint));
					TestTrue(TEXT("Second"), UOrvaneLiveLinkHelper::CreateOrvaneSource(FString::Printf(
												 TEXT("127.0.0.1:%d"), OrvaneTrackingTests::FindFreeUdpPort())));
					TestEqual(TEXT("Two tracking sources"), GetTrackingSources(*Client).Num(), 2);

					TestTrue(TEXT("Removed"), UOrvaneLiveLinkHelper::RemoveAllOrvaneSources());
					TestTrue(TEXT("Tracking sources leave on the next ticks"),
						OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
							[this]()
							{
								return Client->GetSources(true).Num() == 1;
							}));
					TestEqual(TEXT("The other source stays"), Client->GetSources(), TArray<FGuid>{OtherGuid});
				});

			It("succeeds when there is nothing to remove",
				[this]()
				{
					TestTrue(TEXT("Removed"), UOrvaneLiveLinkHelper::RemoveAllOrvaneSources());
				});
		});

	Describe("SaveLiveLinkPreset",
		[this]()
		{
			It("saves the client's sources as an asset under /Game/Orvane/",
				[this]()
				{
					const FString Name = TEXT("OrvaneTest_Saved");
					TestTrue(TEXT("Source"), UOrvaneLiveLinkHelper::CreateOrvaneSource(Endpoint));
					TestTrue(TEXT("Saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(Name));
					TestTrue(TEXT("Package file on disk"), FPaths::FileExists(GetPresetFilename(Name)));
					const ULiveLinkPreset* Preset =
						FindObject<ULiveLinkPreset>(nullptr, TEXT("/Game/Orvane/OrvaneTest_Saved.OrvaneTest_Saved"));
					if (TestNotNull(TEXT("Preset in memory"), Preset))
					{
						TestEqual(TEXT("One source"), Preset->GetSourcePresets().Num(), 1);
					}
					TestTrue(TEXT("Removed"), UOrvaneLiveLinkHelper::RemoveExistingPreset(Name));
				});

			It("saves into a sub-folder when the name holds one",
				[this]()
				{
					TestTrue(TEXT("Saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(TEXT("Stage/OrvaneTest_Nested")));
					TestTrue(TEXT("Package file in the sub-folder"),
						FPaths::FileExists(GetPresetFilename(TEXT("Stage/OrvaneTest_Nested"))));
					TestTrue(
						TEXT("Removed"), UOrvaneLiveLinkHelper::RemoveExistingPreset(TEXT("Stage/OrvaneTest_Nested")));
					TestFalse(
						TEXT("File gone"), FPaths::FileExists(GetPresetFilename(TEXT("Stage/OrvaneTest_Nested"))));
				});

			It("refuses an empty or ill-formed name with a clear message and writes nothing",
				[this]()
				{
					AddExpectedErrorPlain(
						TEXT("The Live Link preset name is empty."), EAutomationExpectedErrorFlags::Exact, 1);
					TestFalse(TEXT("Empty"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(FString()));
					const TCHAR* BadNames[] = {TEXT("/Game/Orvane/P"), TEXT("P/"), TEXT("A//B"), TEXT("Bad Name"),
						TEXT("Bad.Name"), TEXT("Bad:Name")};
					for (const TCHAR* Name : BadNames)
					{
						AddExpectedErrorPlain(FString::Printf(TEXT("Invalid Live Link preset name '%s'"), Name),
							EAutomationExpectedErrorFlags::Contains, 1);
						TestFalse(FString::Printf(TEXT("'%s' refused"), Name),
							UOrvaneLiveLinkHelper::SaveLiveLinkPreset(Name));
					}
				});
		});

	Describe("RemoveExistingPreset",
		[this]()
		{
			It("removes the asset from memory and its file from disk",
				[this]()
				{
					const FString Name = TEXT("OrvaneTest_Removed");
					TestTrue(TEXT("Saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(Name));
					TestTrue(TEXT("Removed"), UOrvaneLiveLinkHelper::RemoveExistingPreset(Name));
					TestFalse(TEXT("File gone"), FPaths::FileExists(GetPresetFilename(Name)));
					TestNull(TEXT("Object gone"), FindObject<ULiveLinkPreset>(nullptr,
													  TEXT("/Game/Orvane/OrvaneTest_Removed.OrvaneTest_Removed")));
					TestTrue(TEXT("Saved again under the same name"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(Name));
					TestTrue(TEXT("Removed again"), UOrvaneLiveLinkHelper::RemoveExistingPreset(Name));
				});

			It("removes a file whose package is not loaded",
				[this]()
				{
					const FString Name = TEXT("OrvaneTest_OnDiskOnly");
					TestTrue(TEXT("Saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(Name));
					UnloadPackage(TEXT("/Game/Orvane/OrvaneTest_OnDiskOnly"));
					TestNull(TEXT("Not in memory"), FindPackage(nullptr, TEXT("/Game/Orvane/OrvaneTest_OnDiskOnly")));
					TestTrue(TEXT("Removed"), UOrvaneLiveLinkHelper::RemoveExistingPreset(Name));
					TestFalse(TEXT("File gone"), FPaths::FileExists(GetPresetFilename(Name)));
				});

			It("succeeds when there is no such preset",
				[this]()
				{
					TestTrue(TEXT("Nothing to remove"),
						UOrvaneLiveLinkHelper::RemoveExistingPreset(TEXT("OrvaneTest_NeverSaved")));
				});

			It("refuses an ill-formed name",
				[this]()
				{
					AddExpectedErrorPlain(
						TEXT("The Live Link preset name is empty."), EAutomationExpectedErrorFlags::Exact, 1);
					TestFalse(TEXT("Empty"), UOrvaneLiveLinkHelper::RemoveExistingPreset(FString()));
				});
		});

	Describe("A saved preset",
		[this]()
		{
			LatentIt("re-creates the tracking source with the same id and endpoint after save, unload, load and apply",
				FTimespan::FromSeconds(600.0),
				[this](const FDoneDelegate& Done)
				{
					const FString Name = TEXT("OrvaneTest_RoundTrip");
					TestTrue(TEXT("Source"), UOrvaneLiveLinkHelper::CreateOrvaneSource(Endpoint));
					const TArray<FGuid> Before = GetTrackingSources(*Client);
					TestTrue(TEXT("Saved"), UOrvaneLiveLinkHelper::SaveLiveLinkPreset(Name));
					TestTrue(TEXT("Removed sources"), UOrvaneLiveLinkHelper::RemoveAllOrvaneSources());
					TestTrue(TEXT("Sources gone"), OrvaneTrackingTests::TickClientUntil(*Client, 2.0,
													   [this]()
													   {
														   return Client->GetSources(true).Num() == 0;
													   }));
					UnloadPackage(TEXT("/Game/Orvane/OrvaneTest_RoundTrip"));
					TestNull(TEXT("Unloaded"), FindPackage(nullptr, TEXT("/Game/Orvane/OrvaneTest_RoundTrip")));

					ULiveLinkPreset* Preset = LoadObject<ULiveLinkPreset>(
						nullptr, TEXT("/Game/Orvane/OrvaneTest_RoundTrip.OrvaneTest_RoundTrip"));
					if (!TestNotNull(TEXT("Loaded from disk"), Preset) ||
						!TestEqual(TEXT("Source before"), Before.Num(), 1))
					{
						Done.Execute();
						return;
					}
					TestEqual(TEXT("One source in the preset"), Preset->GetSourcePresets().Num(), 1);
					Preset->ApplyToClientLatent(
						[this, Done, Before, Name](bool bSuccess)
						{
							TestTrue(TEXT("Applied"), bSuccess);
							const TArray<FGuid> After = GetTrackingSources(*Client);
							if (TestEqual(TEXT("One tracking source again"), After.Num(), 1))
							{
								TestEqual(TEXT("Same id"), After[0], Before[0]);
								const ULiveLinkSourceSettings* Settings = Client->GetSourceSettings(After[0]);
								TestEqual(TEXT("Same connection string"),
									Settings ? Settings->ConnectionString : FString(), Endpoint);
								TestEqual(
									TEXT("Same endpoint"), Client->GetSourceMachineName(After[0]).ToString(), Endpoint);
								const FGuid SourceGuid = After[0];
								OrvaneTrackingTests::WaitForFrames(
									[this, SourceGuid]()
									{
										return Client->IsSourceStillValid(SourceGuid);
									},
									1.0,
									[this, Done, Name](bool bBound)
									{
										TestTrue(TEXT("The re-created source binds"), bBound);
										TestTrue(
											TEXT("Preset removed"), UOrvaneLiveLinkHelper::RemoveExistingPreset(Name));
										Done.Execute();
									});
								return;
							}
							Done.Execute();
						});
				});
		});
}

#endif

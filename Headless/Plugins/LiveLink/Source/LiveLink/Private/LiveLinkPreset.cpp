// Copyright Orvane. All Rights Reserved.

#include "LiveLinkPreset.h"

#include "Features/IModularFeatures.h"
#include "HAL/PlatformTime.h"
#include "ILiveLinkClient.h"
#include "LiveLinkLog.h"
#include "Misc/CoreDelegates.h"
#include "Templates/UniquePtr.h"
#include "UObject/WeakObjectPtrTemplates.h"

namespace LiveLinkPresetPrivate
{
	/** How long an apply waits for the client's sources to shut down, in seconds of the platform clock. */
	constexpr double ShutdownTimeoutSeconds = 1.0;

	ILiveLinkClient* FindClient()
	{
		IModularFeatures& Features = IModularFeatures::Get();
		return Features.IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName)
				   ? &Features.GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName)
				   : nullptr;
	}

	/** Asks every source of the client to shut down. */
	void RemoveAllSources(ILiveLinkClient& Client)
	{
		for (const FGuid& Guid : Client.GetSources())
		{
			Client.RemoveSource(Guid);
		}
		for (const FGuid& Guid : Client.GetVirtualSources())
		{
			Client.RemoveSource(Guid);
		}
	}

	/** Creates the sources, then the subjects, of a preset; true if every one was created. */
	bool CreateSourcesAndSubjects(ILiveLinkClient& Client, const TArray<FLiveLinkSourcePreset>& SourcePresets,
		const TArray<FLiveLinkSubjectPreset>& SubjectPresets)
	{
		bool bAllCreated = true;
		for (const FLiveLinkSourcePreset& SourcePreset : SourcePresets)
		{
			bAllCreated &= Client.CreateSource(SourcePreset);
		}
		for (const FLiveLinkSubjectPreset& SubjectPreset : SubjectPresets)
		{
			bAllCreated &= Client.CreateSubject(SubjectPreset);
		}
		return bAllCreated;
	}

	/**
	 * The apply that is running. There is at most one for all presets: applying two at once would have each remove
	 * the other's sources. It polls at the end of every frame until the client's sources are gone.
	 */
	class FApplyToClientOperation
	{
	public:
		FApplyToClientOperation(ULiveLinkPreset* InPreset, TFunction<void(bool)> InCompletionCallback)
			: Preset(InPreset)
			, CompletionCallback(MoveTemp(InCompletionCallback))
			, Deadline(FPlatformTime::Seconds() + ShutdownTimeoutSeconds)
		{
			EndFrameHandle = FCoreDelegates::OnEndFrame.AddStatic(&FApplyToClientOperation::PollRunning);
		}

		~FApplyToClientOperation() { FCoreDelegates::OnEndFrame.Remove(EndFrameHandle); }

		static bool IsRunning() { return Running.IsValid(); }

		static bool IsRunningFor(const ULiveLinkPreset* InPreset)
		{
			return Running.IsValid() && Running->Preset.Get() == InPreset;
		}

		static void Start(ULiveLinkPreset* InPreset, TFunction<void(bool)> InCompletionCallback)
		{
			Running = MakeUnique<FApplyToClientOperation>(InPreset, MoveTemp(InCompletionCallback));
		}

		/** Ends the running apply; its callback gets the result once the next apply may start. */
		static void Finish(bool bSuccess)
		{
			TUniquePtr<FApplyToClientOperation> Finished = MoveTemp(Running);
			if (Finished.IsValid() && Finished->CompletionCallback)
			{
				TFunction<void(bool)> Callback = MoveTemp(Finished->CompletionCallback);
				Finished.Reset();
				Callback(bSuccess);
			}
		}

	private:
		static void PollRunning()
		{
			if (Running.IsValid())
			{
				Running->Poll();
			}
		}

		void Poll()
		{
			ULiveLinkPreset* AppliedPreset = Preset.Get();
			ILiveLinkClient* Client = FindClient();
			if (AppliedPreset == nullptr || Client == nullptr)
			{
				UE_LOG(LogLiveLink, Warning, TEXT("ApplyToClientLatent: the %s is gone; the preset was not applied."),
					AppliedPreset == nullptr ? TEXT("preset") : TEXT("Live Link client"));
				Finish(false);
				return;
			}
			const int32 RemainingSources = Client->GetSources(true).Num() + Client->GetVirtualSources(true).Num();
			if (RemainingSources == 0)
			{
				Finish(CreateSourcesAndSubjects(
					*Client, AppliedPreset->GetSourcePresets(), AppliedPreset->GetSubjectPresets()));
				return;
			}
			if (FPlatformTime::Seconds() > Deadline)
			{
				UE_LOG(LogLiveLink, Warning,
					TEXT("ApplyToClientLatent: %d source(s) did not shut down within %.1f seconds; the preset '%s' "
						 "was not applied."),
					RemainingSources, ShutdownTimeoutSeconds, *AppliedPreset->GetPathName());
				Finish(false);
			}
		}

		static inline TUniquePtr<FApplyToClientOperation> Running;

		TWeakObjectPtr<ULiveLinkPreset> Preset;
		TFunction<void(bool)> CompletionCallback;
		double Deadline;
		FDelegateHandle EndFrameHandle;
	};
} // namespace LiveLinkPresetPrivate

using namespace LiveLinkPresetPrivate;

void ULiveLinkPreset::BeginDestroy()
{
	CancelLatentAction();
	Super::BeginDestroy();
}

bool ULiveLinkPreset::ApplyToClient() const
{
	ILiveLinkClient* Client = FindClient();
	if (Client == nullptr)
	{
		UE_LOG(LogLiveLink, Warning, TEXT("ApplyToClient: there is no Live Link client; the preset was not applied."));
		return false;
	}
	RemoveAllSources(*Client);
	Client->ForceTick();
	const int32 RemainingSources = Client->GetSources(true).Num() + Client->GetVirtualSources(true).Num();
	if (RemainingSources > 0)
	{
		UE_LOG(LogLiveLink, Warning,
			TEXT("ApplyToClient: %d source(s) have not shut down yet; the preset '%s' was not applied. "
				 "ApplyToClientLatent waits for them."),
			RemainingSources, *GetPathName());
		return false;
	}
	return CreateSourcesAndSubjects(*Client, Sources, Subjects);
}

void ULiveLinkPreset::ApplyToClientLatent(TFunction<void(bool)> CompletionCallback)
{
	if (FApplyToClientOperation::IsRunning())
	{
		UE_LOG(LogLiveLink, Warning,
			TEXT("ApplyToClientLatent: the preset '%s' was not applied: an operation is already in progress."),
			*GetPathName());
		if (CompletionCallback)
		{
			CompletionCallback(false);
		}
		return;
	}
	ILiveLinkClient* Client = FindClient();
	if (Client == nullptr)
	{
		UE_LOG(LogLiveLink, Warning,
			TEXT("ApplyToClientLatent: there is no Live Link client; the preset '%s' was not applied."),
			*GetPathName());
		if (CompletionCallback)
		{
			CompletionCallback(false);
		}
		return;
	}
	RemoveAllSources(*Client);
	Client->ForceTick();
	FApplyToClientOperation::Start(this, MoveTemp(CompletionCallback));
}

void ULiveLinkPreset::CancelLatentAction()
{
	if (FApplyToClientOperation::IsRunningFor(this))
	{
		FApplyToClientOperation::Finish(false);
	}
}

bool ULiveLinkPreset::AddToClient(const bool bRecreatePresets) const
{
	ILiveLinkClient* Client = FindClient();
	if (Client == nullptr)
	{
		UE_LOG(LogLiveLink, Warning, TEXT("AddToClient: there is no Live Link client; the preset was not added."));
		return false;
	}

	const TArray<FGuid> ExistingSources = Client->GetSources(true);
	const TArray<FLiveLinkSubjectKey> ExistingSubjects = Client->GetSubjects(true, true);
	TArray<FLiveLinkSourcePreset> SourcesToCreate;
	TArray<FLiveLinkSubjectPreset> SubjectsToCreate;
	bool bReplacing = false;
	for (const FLiveLinkSourcePreset& SourcePreset : Sources)
	{
		if (ExistingSources.Contains(SourcePreset.Guid))
		{
			if (!bRecreatePresets)
			{
				continue;
			}
			Client->RemoveSource(SourcePreset.Guid);
			bReplacing = true;
		}
		SourcesToCreate.Add(SourcePreset);
	}
	for (const FLiveLinkSubjectPreset& SubjectPreset : Subjects)
	{
		if (ExistingSubjects.Contains(SubjectPreset.Key))
		{
			if (!bRecreatePresets)
			{
				continue;
			}
			Client->RemoveSubject_AnyThread(SubjectPreset.Key);
			bReplacing = true;
		}
		SubjectsToCreate.Add(SubjectPreset);
	}
	if (bReplacing)
	{
		// Removals take effect on a tick; a source that needs longer to shut down makes its re-creation fail.
		Client->ForceTick();
	}
	return CreateSourcesAndSubjects(*Client, SourcesToCreate, SubjectsToCreate);
}

void ULiveLinkPreset::BuildFromClient()
{
	ILiveLinkClient* Client = FindClient();
	if (Client == nullptr)
	{
		UE_LOG(LogLiveLink, Warning, TEXT("BuildFromClient: there is no Live Link client; the preset is unchanged."));
		return;
	}

	// The previous copies of the settings live inside this preset; they would otherwise be saved with it.
	for (const FLiveLinkSourcePreset& SourcePreset : Sources)
	{
		if (SourcePreset.Settings && SourcePreset.Settings->GetOuter() == this)
		{
			SourcePreset.Settings->MarkAsGarbage();
		}
	}
	for (const FLiveLinkSubjectPreset& SubjectPreset : Subjects)
	{
		if (SubjectPreset.Settings && SubjectPreset.Settings->GetOuter() == this)
		{
			SubjectPreset.Settings->MarkAsGarbage();
		}
	}
	Sources.Reset();
	Subjects.Reset();

	TArray<FGuid> SourceGuids = Client->GetSources();
	SourceGuids.Append(Client->GetVirtualSources());
	for (const FGuid& Guid : SourceGuids)
	{
		FLiveLinkSourcePreset SourcePreset = Client->GetSourcePreset(Guid, this);
		if (SourcePreset.Guid.IsValid())
		{
			Sources.Add(MoveTemp(SourcePreset));
		}
	}
	for (const FLiveLinkSubjectKey& Key : Client->GetSubjects(true, true))
	{
		FLiveLinkSubjectPreset SubjectPreset = Client->GetSubjectPreset(Key, this);
		if (SubjectPreset.Role.Get() != nullptr)
		{
			Subjects.Add(MoveTemp(SubjectPreset));
		}
	}
	MarkPackageDirty();
}

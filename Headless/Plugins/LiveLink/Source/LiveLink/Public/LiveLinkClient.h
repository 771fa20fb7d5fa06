// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "HAL/CriticalSection.h"
#include "ILiveLinkClient.h"
#include "ILiveLinkSource.h"
#include "LiveLinkPresetTypes.h"
#include "LiveLinkRole.h"
#include "LiveLinkSourceSettings.h"
#include "LiveLinkSubjectSettings.h"
#include "LiveLinkTypes.h"
#include "UObject/StrongObjectPtr.h"

#include <atomic>

/**
 * The Live Link client of the LiveLink module, registered as the ILiveLinkClient modular feature.
 *
 * Pushes from any thread are queued under their own lock, without touching the subjects, and applied on the
 * next tick (FCoreDelegates::OnSamplingInput, early in each engine frame). The queue keeps at most the source's
 * MaxNumberOfFrameToBuffered frames per subject, so a source that pushes faster than the engine ticks costs
 * bounded memory.
 *
 * Clocks. Frames carry times of the platform clock (FLiveLinkWorldTime, FPlatformTime::Seconds). In EngineTime
 * mode a subject is read at the platform time at which the client last ticked, minus the source's
 * EngineTimeOffset: in the editor's real-time loop that is the frame's FApp::GetCurrentTime(), and it stays
 * comparable with frame times when the application clock is simulated. A subject counts as receiving when it got
 * a frame within ULiveLinkSettings::TimeWithoutFrameToBeConsiderAsInvalid on the application clock
 * (FApp::GetCurrentTime), measured from the tick that applied the frame, so simulated time ages subjects the way
 * it fires timers.
 */
class LIVELINK_API FLiveLinkClient : public ILiveLinkClient
{
public:
	FLiveLinkClient();
	virtual ~FLiveLinkClient() override;

	FLiveLinkClient(const FLiveLinkClient&) = delete;
	FLiveLinkClient& operator=(const FLiveLinkClient&) = delete;

	/** Applies what was pushed, updates the sources and removes the ones that finished shutting down. */
	void Tick();

	/** Asks every source to shut down; they go on later ticks, once each agreed. */
	void RemoveAllSources();

	/**
	 * Asks every source to shut down and polls them until all agreed or MaxWaitSeconds passed; the ones that
	 * refused are reported and dropped. Used when the client itself goes away.
	 */
	void Shutdown(double MaxWaitSeconds = 1.0);

	/** The sources the user interface lists (the ones that can be displayed, and not shutting down). */
	TArray<FGuid> GetDisplayableSources(bool bIncludeVirtualSources = false) const;

	//~ ILiveLinkClient interface
	virtual FGuid AddSource(TSharedPtr<ILiveLinkSource> Source) override;
	virtual FGuid AddVirtualSubjectSource(FName SourceName) override;
	virtual bool CreateSource(const FLiveLinkSourcePreset& SourcePreset) override;
	virtual void RemoveSource(TSharedPtr<ILiveLinkSource> Source) override;
	virtual void RemoveSource(FGuid InEntryGuid) override;
	virtual bool HasSourceBeenAdded(TSharedPtr<ILiveLinkSource> Source) const override;
	virtual TArray<FGuid> GetSources(bool bEvenIfPendingKill = false) const override;
	virtual TArray<FGuid> GetVirtualSources(bool bEvenIfPendingKill = false) const override;
	virtual FLiveLinkSourcePreset GetSourcePreset(FGuid SourceGuid, UObject* DuplicatedObjectOuter) const override;
	virtual FText GetSourceType(FGuid EntryGuid) const override;
	virtual FText GetSourceStatus(FGuid EntryGuid) const override;
	virtual FText GetSourceMachineName(FGuid EntryGuid) const override;
	virtual bool IsSourceStillValid(FGuid EntryGuid) const override;
	virtual ULiveLinkSourceSettings* GetSourceSettings(const FGuid& SourceKey) const override;

	virtual void PushSubjectStaticData_AnyThread(const FLiveLinkSubjectKey& SubjectKey, TSubclassOf<ULiveLinkRole> Role,
		FLiveLinkStaticDataStruct&& StaticData) override;
	virtual void PushSubjectFrameData_AnyThread(
		const FLiveLinkSubjectKey& SubjectKey, FLiveLinkFrameDataStruct&& FrameData) override;
	virtual void RemoveSubject_AnyThread(const FLiveLinkSubjectKey& SubjectKey) override;
	virtual void ClearSubjectsFrames_AnyThread(FLiveLinkSubjectName SubjectName) override;
	virtual void ClearSubjectsFrames_AnyThread(const FLiveLinkSubjectKey& SubjectKey) override;
	virtual void ClearAllSubjectsFrames_AnyThread() override;

	virtual bool CreateSubject(const FLiveLinkSubjectPreset& SubjectPreset) override;
	virtual bool AddVirtualSubject(const FLiveLinkSubjectKey& VirtualSubjectKey,
		TSubclassOf<ULiveLinkVirtualSubject> VirtualSubjectClass) override;
	virtual void RemoveVirtualSubject(const FLiveLinkSubjectKey& VirtualSubjectKey) override;
	virtual FLiveLinkSubjectPreset GetSubjectPreset(
		const FLiveLinkSubjectKey& SubjectKey, UObject* DuplicatedObjectOuter) const override;
	virtual TArray<FLiveLinkSubjectKey> GetSubjects(
		bool bIncludeDisabledSubject, bool bIncludeVirtualSubject) const override;
	virtual bool IsSubjectValid(const FLiveLinkSubjectKey& SubjectKey) const override;
	virtual bool IsSubjectValid(FLiveLinkSubjectName SubjectName) const override;
	virtual bool IsSubjectEnabled(const FLiveLinkSubjectKey& SubjectKey, bool bForThisFrame) const override;
	virtual bool IsSubjectEnabled(FLiveLinkSubjectName SubjectName) const override;
	virtual void SetSubjectEnabled(const FLiveLinkSubjectKey& SubjectKey, bool bEnabled) override;
	virtual bool IsSubjectTimeSynchronized(const FLiveLinkSubjectKey& SubjectKey) const override;
	virtual bool IsSubjectTimeSynchronized(FLiveLinkSubjectName SubjectName) const override;
	virtual bool IsVirtualSubject(const FLiveLinkSubjectKey& SubjectKey) const override;
	virtual ELiveLinkSubjectState GetSubjectState(FLiveLinkSubjectName InSubjectName) const override;
	virtual TArray<FLiveLinkSubjectKey> GetSubjectsSupportingRole(TSubclassOf<ULiveLinkRole> SupportedRole,
		bool bIncludeDisabledSubject, bool bIncludeVirtualSubject) const override;
	virtual TArray<FLiveLinkTime> GetSubjectFrameTimes(const FLiveLinkSubjectKey& SubjectKey) const override;
	virtual TArray<FLiveLinkTime> GetSubjectFrameTimes(FLiveLinkSubjectName SubjectName) const override;
	virtual UObject* GetSubjectSettings(const FLiveLinkSubjectKey& SubjectKey) const override;
	virtual TSubclassOf<ULiveLinkRole> GetSubjectRole_AnyThread(const FLiveLinkSubjectKey& SubjectKey) const override;
	virtual TSubclassOf<ULiveLinkRole> GetSubjectRole_AnyThread(FLiveLinkSubjectName SubjectName) const override;
	virtual bool DoesSubjectSupportsRole_AnyThread(
		const FLiveLinkSubjectKey& SubjectKey, TSubclassOf<ULiveLinkRole> SupportedRole) const override;
	virtual bool DoesSubjectSupportsRole_AnyThread(
		FLiveLinkSubjectName SubjectName, TSubclassOf<ULiveLinkRole> SupportedRole) const override;
	virtual const FLiveLinkStaticDataStruct* GetSubjectStaticData_AnyThread(
		const FLiveLinkSubjectKey& SubjectKey) override;

	virtual bool EvaluateFrame_AnyThread(FLiveLinkSubjectName SubjectName, TSubclassOf<ULiveLinkRole> Role,
		FLiveLinkSubjectFrameData& OutFrame) override;
	virtual bool EvaluateFrameAtWorldTime_AnyThread(FLiveLinkSubjectName SubjectName, double WorldTime,
		TSubclassOf<ULiveLinkRole> DesiredRole, FLiveLinkSubjectFrameData& OutFrame) override;
	virtual bool EvaluateFrameAtSceneTime_AnyThread(FLiveLinkSubjectName SubjectName,
		const FQualifiedFrameTime& SceneTime, TSubclassOf<ULiveLinkRole> DesiredRole,
		FLiveLinkSubjectFrameData& OutFrame) override;

	virtual FSimpleMulticastDelegate& OnLiveLinkTicked() override { return OnLiveLinkTickedDelegate; }
	virtual void ForceTick() override { Tick(); }
	virtual bool HasPendingSubjectFrames() override;

	virtual FSimpleMulticastDelegate& OnLiveLinkSourcesChanged() override { return OnLiveLinkSourcesChangedDelegate; }
	virtual FSimpleMulticastDelegate& OnLiveLinkSubjectsChanged() override { return OnLiveLinkSubjectsChangedDelegate; }
	virtual FOnLiveLinkSourceChangedDelegate& OnLiveLinkSourceAdded() override { return OnLiveLinkSourceAddedDelegate; }
	virtual FOnLiveLinkSourceChangedDelegate& OnLiveLinkSourceRemoved() override
	{
		return OnLiveLinkSourceRemovedDelegate;
	}
	virtual FOnLiveLinkSubjectChangedDelegate& OnLiveLinkSubjectAdded() override
	{
		return OnLiveLinkSubjectAddedDelegate;
	}
	virtual FOnLiveLinkSubjectChangedDelegate& OnLiveLinkSubjectRemoved() override
	{
		return OnLiveLinkSubjectRemovedDelegate;
	}
#if WITH_EDITOR
	virtual FOnLiveLinkSubjectEvaluated& OnLiveLinkSubjectEvaluated() override
	{
		return OnLiveLinkSubjectEvaluatedDelegate;
	}
#endif

	virtual void RegisterForFrameDataReceived(const FLiveLinkSubjectKey& InSubjectKey,
		const FOnLiveLinkSubjectStaticDataReceived::FDelegate& OnStaticDataReceived_AnyThread,
		const FOnLiveLinkSubjectFrameDataReceived::FDelegate& OnFrameDataReceived_AnyThread,
		FDelegateHandle& OutStaticDataReceivedHandle, FDelegateHandle& OutFrameDataReceivedHandle) override;
	virtual void UnregisterForFrameDataReceived(const FLiveLinkSubjectKey& InSubjectKey,
		FDelegateHandle InStaticDataReceivedHandle, FDelegateHandle InFrameDataReceivedHandle) override;
	virtual bool RegisterForSubjectFrames(FLiveLinkSubjectName SubjectName,
		const FOnLiveLinkSubjectStaticDataAdded::FDelegate& OnStaticDataAdded,
		const FOnLiveLinkSubjectFrameDataAdded::FDelegate& OnFrameDataAdded, FDelegateHandle& OutStaticDataAddedHandle,
		FDelegateHandle& OutFrameDataAddedHandle, TSubclassOf<ULiveLinkRole>& OutSubjectRole,
		FLiveLinkStaticDataStruct* OutStaticData = nullptr) override;
	virtual void UnregisterSubjectFramesHandle(FLiveLinkSubjectName InSubjectName,
		FDelegateHandle InStaticDataAddedHandle, FDelegateHandle InFrameDataAddedHandle) override;
	//~ End ILiveLinkClient interface

private:
	/** A registered source. */
	struct FSourceItem
	{
		FGuid Guid;
		TSharedPtr<ILiveLinkSource> Source;
		TStrongObjectPtr<ULiveLinkSourceSettings> Settings;
		bool bPendingKill = false;
	};

	/** A subject: its role, static data and buffered frames, oldest first. */
	struct FSubjectItem
	{
		FLiveLinkSubjectKey Key;
		TSubclassOf<ULiveLinkRole> Role;
		FLiveLinkStaticDataStruct StaticData;
		TArray<FLiveLinkFrameDataStruct> Frames;
		TStrongObjectPtr<ULiveLinkSubjectSettings> Settings;
		bool bEnabled = false;
		/** Application time of the tick that applied the newest frame. */
		double LastFrameAppTime = 0.0;
		bool bHasReceivedFrame = false;
	};

	/** What was pushed for one subject since the last tick. */
	struct FPendingSubject
	{
		bool bRemove = false;
		bool bClearFrames = false;
		bool bHasStaticData = false;
		TSubclassOf<ULiveLinkRole> Role;
		FLiveLinkStaticDataStruct StaticData;
		TArray<FLiveLinkFrameDataStruct> Frames;
	};

	/** Delegates that want pushes as they arrive. */
	struct FReceivedDelegates
	{
		FOnLiveLinkSubjectStaticDataReceived OnStaticDataReceived;
		FOnLiveLinkSubjectFrameDataReceived OnFrameDataReceived;
	};

	/** Delegates that want data once it was added to a subject. */
	struct FAddedDelegates
	{
		FOnLiveLinkSubjectStaticDataAdded OnStaticDataAdded;
		FOnLiveLinkSubjectFrameDataAdded OnFrameDataAdded;
	};

	/** What a tick changed, announced once no lock is held. */
	struct FTickChanges
	{
		TArray<FGuid> RemovedSources;
		TArray<FLiveLinkSubjectKey> AddedSubjects;
		TArray<FLiveLinkSubjectKey> RemovedSubjects;
	};

	/** Takes what was pushed and applies it to the subjects. */
	void ApplyPendingData(FTickChanges& Changes);
	void ApplyStaticData(const FLiveLinkSubjectKey& Key, FPendingSubject& Pending, FTickChanges& Changes);
	void ApplyFrames(const FLiveLinkSubjectKey& Key, FPendingSubject& Pending);

	/** Polls the sources that are shutting down and removes those that agreed, with their subjects. */
	void RemoveShutDownSources(FTickChanges& Changes);
	void RemoveSourceItem(const FGuid& SourceGuid, FTickChanges& Changes);

	/** Updates the frame caps the push queue applies, from the sources' settings. */
	void RefreshSourceFrameCaps();

	/** Drops frames older than their source's ValidEngineTime. */
	void DropExpiredFrames();

	void BroadcastChanges(const FTickChanges& Changes);

	/** Adds a source under a GUID with its settings, then hands it the client and the settings. */
	void RegisterSource(const FGuid& Guid, TSharedPtr<ILiveLinkSource> Source, ULiveLinkSourceSettings* Settings);

	/** A new settings object for a source from a preset's: a copy, or matching properties of a different class. */
	ULiveLinkSourceSettings* MakeSettingsFromPreset(
		const ULiveLinkSourceSettings* PresetSettings, TSubclassOf<ULiveLinkSourceSettings> SettingsClass) const;

	/** The caller holds CollectionLock. */
	const FSourceItem* FindSource(const FGuid& Guid) const;
	FSourceItem* FindSource(const FGuid& Guid);
	const FSubjectItem* FindSubject(const FLiveLinkSubjectKey& Key) const;
	FSubjectItem* FindSubject(const FLiveLinkSubjectKey& Key);
	const FSubjectItem* FindEnabledSubject(FLiveLinkSubjectName Name) const;
	bool IsSubjectReceiving(const FSubjectItem& Subject) const;

	/** Picks or interpolates the subject's frame at a time; the caller holds CollectionLock. */
	bool EvaluateSubject(const FSubjectItem& Subject, TSubclassOf<ULiveLinkRole> DesiredRole,
		FLiveLinkSubjectFrameData& OutFrame, TOptional<double> WorldTime, TOptional<double> SceneSeconds) const;

	/** Protects Sources and Subjects; taken by the game thread and by evaluations. */
	mutable FCriticalSection CollectionLock;
	TArray<FSourceItem> Sources;
	TArray<FSubjectItem> Subjects;

	/** Protects the push queue; held only to move data in or out. */
	mutable FCriticalSection PendingLock;
	TMap<FLiveLinkSubjectKey, FPendingSubject> PendingSubjects;
	/** Subjects that have static data (or a role from a preset), so frames of other subjects are dropped early. */
	TSet<FLiveLinkSubjectKey> KnownSubjects;
	/** The most frames queued per subject, by source. */
	TMap<FGuid, int32> SourceFrameCaps;
	bool bClearAllPending = false;

	/** Protects the delegates that get pushes as they arrive. */
	mutable FCriticalSection ReceivedDelegatesLock;
	TMap<FLiveLinkSubjectKey, FReceivedDelegates> ReceivedDelegates;
	std::atomic<bool> bHasReceivedDelegates{false};

	TMap<FLiveLinkSubjectName, FAddedDelegates> AddedDelegates;

	/** Times of the last tick: the application clock and the platform clock. */
	double CachedAppTime = 0.0;
	std::atomic<double> CachedPlatformTimeAnyThread{0.0};

	/** The identifier of the next frame applied. */
	FLiveLinkFrameIdentifier NextFrameId = 0;

	FDelegateHandle SamplingInputHandle;

	FSimpleMulticastDelegate OnLiveLinkTickedDelegate;
	FSimpleMulticastDelegate OnLiveLinkSourcesChangedDelegate;
	FSimpleMulticastDelegate OnLiveLinkSubjectsChangedDelegate;
	FOnLiveLinkSourceChangedDelegate OnLiveLinkSourceAddedDelegate;
	FOnLiveLinkSourceChangedDelegate OnLiveLinkSourceRemovedDelegate;
	FOnLiveLinkSubjectChangedDelegate OnLiveLinkSubjectAddedDelegate;
	FOnLiveLinkSubjectChangedDelegate OnLiveLinkSubjectRemovedDelegate;
#if WITH_EDITOR
	FOnLiveLinkSubjectEvaluated OnLiveLinkSubjectEvaluatedDelegate;
#endif
};

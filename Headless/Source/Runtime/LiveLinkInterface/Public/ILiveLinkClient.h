// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Features/IModularFeature.h"
#include "LiveLinkPresetTypes.h"
#include "LiveLinkRole.h"
#include "LiveLinkTypes.h"
#include "Misc/Guid.h"
#include "Misc/QualifiedFrameTime.h"
#include "Templates/SubclassOf.h"

class ILiveLinkSource;
class ULiveLinkSourceSettings;
class ULiveLinkVirtualSubject;

DECLARE_MULTICAST_DELEGATE_OneParam(FOnLiveLinkSourceChangedDelegate, FGuid /*SourceGuid*/);
DECLARE_MULTICAST_DELEGATE_OneParam(FOnLiveLinkSubjectChangedDelegate, FLiveLinkSubjectKey /*SubjectKey*/);
DECLARE_MULTICAST_DELEGATE_ThreeParams(FOnLiveLinkSubjectStaticDataReceived, FLiveLinkSubjectKey /*SubjectKey*/,
	TSubclassOf<ULiveLinkRole> /*SubjectRole*/, const FLiveLinkStaticDataStruct& /*StaticData*/);
DECLARE_MULTICAST_DELEGATE_TwoParams(FOnLiveLinkSubjectFrameDataReceived, FLiveLinkSubjectKey /*SubjectKey*/,
	const FLiveLinkFrameDataStruct& /*FrameData*/);
DECLARE_MULTICAST_DELEGATE_ThreeParams(FOnLiveLinkSubjectStaticDataAdded, FLiveLinkSubjectKey /*SubjectKey*/,
	TSubclassOf<ULiveLinkRole> /*SubjectRole*/, const FLiveLinkStaticDataStruct& /*StaticData*/);
DECLARE_MULTICAST_DELEGATE_ThreeParams(FOnLiveLinkSubjectFrameDataAdded, FLiveLinkSubjectKey /*SubjectKey*/,
	TSubclassOf<ULiveLinkRole> /*SubjectRole*/, const FLiveLinkFrameDataStruct& /*FrameData*/);
#if WITH_EDITOR
DECLARE_MULTICAST_DELEGATE_FourParams(FOnLiveLinkSubjectEvaluated, FLiveLinkSubjectKey /*SubjectKey*/,
	TSubclassOf<ULiveLinkRole> /*RequestedRole*/, const FLiveLinkTime& /*ClientTime*/,
	const FLiveLinkTime& /*SubjectTime*/);
#endif

/**
 * The Live Link client: it owns the sources, keeps the subjects they push, and hands out each subject's frame
 * for the current engine frame. Pushing and evaluating may be called from any thread; everything else on the
 * game thread. Only one subject of a given name may be enabled at a time.
 *
 * Get it with IModularFeatures::Get().GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName)
 * once IsModularFeatureAvailable says it is registered.
 */
class LIVELINKINTERFACE_API ILiveLinkClient : public IModularFeature
{
public:
	virtual ~ILiveLinkClient() = default;

	/** The name the client is registered under: "ModularFeature_LiveLinkClient". */
	static FName ModularFeatureName;

	static constexpr int32 LIVELINK_VERSION = 2;

	// Sources

	/** Registers a source and gives it its GUID; the source receives the client, then its settings. */
	virtual FGuid AddSource(TSharedPtr<ILiveLinkSource> Source) = 0;

	/** Adds a source that holds only virtual subjects. */
	virtual FGuid AddVirtualSubjectSource(FName SourceName) = 0;

	/** Creates a source again from a preset, with the preset's GUID and a copy of its settings. */
	virtual bool CreateSource(const FLiveLinkSourcePreset& SourcePreset) = 0;

	/** Asks a source to shut down; it and its subjects go on a later tick, once it agreed. */
	virtual void RemoveSource(TSharedPtr<ILiveLinkSource> Source) = 0;
	virtual void RemoveSource(FGuid InEntryGuid) = 0;

	/** True if the source is registered (even if it is shutting down). */
	virtual bool HasSourceBeenAdded(TSharedPtr<ILiveLinkSource> Source) const = 0;

	/** The GUIDs of the sources, without the virtual-subject sources; with bEvenIfPendingKill also those leaving. */
	virtual TArray<FGuid> GetSources(bool bEvenIfPendingKill = false) const = 0;

	/** The GUIDs of the virtual-subject sources. */
	virtual TArray<FGuid> GetVirtualSources(bool bEvenIfPendingKill = false) const = 0;

	/** A source as a preset keeps it; its settings are duplicated into DuplicatedObjectOuter. */
	virtual FLiveLinkSourcePreset GetSourcePreset(FGuid SourceGuid, UObject* DuplicatedObjectOuter) const = 0;

	virtual FText GetSourceType(FGuid EntryGuid) const = 0;
	virtual FText GetSourceStatus(FGuid EntryGuid) const = 0;
	virtual FText GetSourceMachineName(FGuid EntryGuid) const = 0;
	virtual bool IsSourceStillValid(FGuid EntryGuid) const = 0;

	/** The settings object of a source; null for an unknown GUID. */
	virtual ULiveLinkSourceSettings* GetSourceSettings(const FGuid& SourceKey) const = 0;

	// Pushing data (any thread)

	/** Sets a subject's role and static data (creating the subject), which clears all its buffered frames. */
	virtual void PushSubjectStaticData_AnyThread(const FLiveLinkSubjectKey& SubjectKey, TSubclassOf<ULiveLinkRole> Role,
		FLiveLinkStaticDataStruct&& StaticData) = 0;

	/** Adds a frame to a subject; a subject without static data drops it. */
	virtual void PushSubjectFrameData_AnyThread(
		const FLiveLinkSubjectKey& SubjectKey, FLiveLinkFrameDataStruct&& FrameData) = 0;

	/** Removes a subject. */
	virtual void RemoveSubject_AnyThread(const FLiveLinkSubjectKey& SubjectName) = 0;

	/** Drops the buffered frames of the enabled subject of that name, or of one subject, or of every subject. */
	virtual void ClearSubjectsFrames_AnyThread(FLiveLinkSubjectName SubjectName) = 0;
	virtual void ClearSubjectsFrames_AnyThread(const FLiveLinkSubjectKey& SubjectKey) = 0;
	virtual void ClearAllSubjectsFrames_AnyThread() = 0;

	// Subjects

	/** Creates a subject from a preset. */
	virtual bool CreateSubject(const FLiveLinkSubjectPreset& SubjectPreset) = 0;

	/** Adds a virtual subject of a class to a virtual-subject source. */
	virtual bool AddVirtualSubject(
		const FLiveLinkSubjectKey& VirtualSubjectKey, TSubclassOf<ULiveLinkVirtualSubject> VirtualSubjectClass) = 0;
	virtual void RemoveVirtualSubject(const FLiveLinkSubjectKey& VirtualSubjectKey) = 0;

	/** A subject as a preset keeps it; its settings are duplicated into DuplicatedObjectOuter. */
	virtual FLiveLinkSubjectPreset GetSubjectPreset(
		const FLiveLinkSubjectKey& SubjectKey, UObject* DuplicatedObjectOuter) const = 0;

	/** The keys of the subjects. */
	virtual TArray<FLiveLinkSubjectKey> GetSubjects(
		bool bIncludeDisabledSubject, bool bIncludeVirtualSubject) const = 0;

	/** True if the subject exists, has static data and received a frame recently. */
	virtual bool IsSubjectValid(const FLiveLinkSubjectKey& SubjectKey) const = 0;
	virtual bool IsSubjectValid(FLiveLinkSubjectName SubjectName) const = 0;

	/** True if the subject is the enabled one of its name. */
	virtual bool IsSubjectEnabled(const FLiveLinkSubjectKey& SubjectKey, bool bForThisFrame) const = 0;
	virtual bool IsSubjectEnabled(FLiveLinkSubjectName SubjectName) const = 0;

	/** Enables a subject (disabling the other subjects of its name) or disables it. */
	virtual void SetSubjectEnabled(const FLiveLinkSubjectKey& SubjectKey, bool bEnabled) = 0;

	/** True if the subject's frames are read by timecode. */
	virtual bool IsSubjectTimeSynchronized(const FLiveLinkSubjectKey& SubjectKey) const = 0;
	virtual bool IsSubjectTimeSynchronized(FLiveLinkSubjectName SubjectName) const = 0;

	virtual bool IsVirtualSubject(const FLiveLinkSubjectKey& SubjectKey) const = 0;

	/** How the enabled subject of that name is doing. */
	virtual ELiveLinkSubjectState GetSubjectState(FLiveLinkSubjectName InSubjectName) const = 0;

	/** The subjects whose role is SupportedRole or derives from it. */
	virtual TArray<FLiveLinkSubjectKey> GetSubjectsSupportingRole(
		TSubclassOf<ULiveLinkRole> SupportedRole, bool bIncludeDisabledSubject, bool bIncludeVirtualSubject) const = 0;

	/** The times of a subject's buffered frames, oldest first. */
	virtual TArray<FLiveLinkTime> GetSubjectFrameTimes(const FLiveLinkSubjectKey& SubjectKey) const = 0;
	virtual TArray<FLiveLinkTime> GetSubjectFrameTimes(FLiveLinkSubjectName SubjectName) const = 0;

	/** The settings object of a subject (the virtual subject itself for a virtual subject). */
	virtual UObject* GetSubjectSettings(const FLiveLinkSubjectKey& SubjectKey) const = 0;

	/** The role of a subject; null if it has none. */
	virtual TSubclassOf<ULiveLinkRole> GetSubjectRole_AnyThread(const FLiveLinkSubjectKey& SubjectKey) const = 0;
	virtual TSubclassOf<ULiveLinkRole> GetSubjectRole_AnyThread(FLiveLinkSubjectName SubjectName) const = 0;

	/** True if the subject's role is SupportedRole or derives from it. */
	virtual bool DoesSubjectSupportsRole_AnyThread(
		const FLiveLinkSubjectKey& SubjectKey, TSubclassOf<ULiveLinkRole> SupportedRole) const = 0;
	virtual bool DoesSubjectSupportsRole_AnyThread(
		FLiveLinkSubjectName SubjectName, TSubclassOf<ULiveLinkRole> SupportedRole) const = 0;

	/** The static data the subject was last given; null if none. Valid until the next client tick. */
	virtual const FLiveLinkStaticDataStruct* GetSubjectStaticData_AnyThread(const FLiveLinkSubjectKey& SubjectKey) = 0;

	// Evaluation (any thread)

	/** The enabled subject's frame for this engine frame, as its source's mode picks it, read as Role. */
	virtual bool EvaluateFrame_AnyThread(
		FLiveLinkSubjectName SubjectName, TSubclassOf<ULiveLinkRole> Role, FLiveLinkSubjectFrameData& OutFrame) = 0;

	/** The enabled subject's frame at a time of the platform clock, interpolated where the role allows. */
	virtual bool EvaluateFrameAtWorldTime_AnyThread(FLiveLinkSubjectName SubjectName, double WorldTime,
		TSubclassOf<ULiveLinkRole> DesiredRole, FLiveLinkSubjectFrameData& OutFrame) = 0;

	/** The enabled subject's frame at a timecode, interpolated where the role allows. */
	virtual bool EvaluateFrameAtSceneTime_AnyThread(FLiveLinkSubjectName SubjectName,
		const FQualifiedFrameTime& SceneTime, TSubclassOf<ULiveLinkRole> DesiredRole,
		FLiveLinkSubjectFrameData& OutFrame) = 0;

	// Ticking and events (game thread)

	/** Broadcast after each client tick. */
	virtual FSimpleMulticastDelegate& OnLiveLinkTicked() = 0;

	/** Runs a client tick now. */
	virtual void ForceTick() = 0;

	/** True if pushed data waits for the next tick. */
	virtual bool HasPendingSubjectFrames() = 0;

	virtual FSimpleMulticastDelegate& OnLiveLinkSourcesChanged() = 0;
	virtual FSimpleMulticastDelegate& OnLiveLinkSubjectsChanged() = 0;
	virtual FOnLiveLinkSourceChangedDelegate& OnLiveLinkSourceAdded() = 0;
	virtual FOnLiveLinkSourceChangedDelegate& OnLiveLinkSourceRemoved() = 0;
	virtual FOnLiveLinkSubjectChangedDelegate& OnLiveLinkSubjectAdded() = 0;
	virtual FOnLiveLinkSubjectChangedDelegate& OnLiveLinkSubjectRemoved() = 0;

#if WITH_EDITOR
	/** Broadcast when a subject was evaluated, with the time asked for and the time of the frame handed out. */
	virtual FOnLiveLinkSubjectEvaluated& OnLiveLinkSubjectEvaluated() = 0;
#endif

	/** Calls the delegates as soon as a push arrives, on the pushing thread, before the data is validated. */
	virtual void RegisterForFrameDataReceived(const FLiveLinkSubjectKey& InSubjectKey,
		const FOnLiveLinkSubjectStaticDataReceived::FDelegate& OnStaticDataReceived_AnyThread,
		const FOnLiveLinkSubjectFrameDataReceived::FDelegate& OnFrameDataReceived_AnyThread,
		FDelegateHandle& OutStaticDataReceivedHandle, FDelegateHandle& OutFrameDataReceivedHandle) = 0;
	virtual void UnregisterForFrameDataReceived(const FLiveLinkSubjectKey& InSubjectKey,
		FDelegateHandle InStaticDataReceivedHandle, FDelegateHandle InFrameDataReceivedHandle) = 0;

	/** Calls the delegates when data was validated and added to a subject, on the game thread. */
	virtual bool RegisterForSubjectFrames(FLiveLinkSubjectName SubjectName,
		const FOnLiveLinkSubjectStaticDataAdded::FDelegate& OnStaticDataAdded,
		const FOnLiveLinkSubjectFrameDataAdded::FDelegate& OnFrameDataAdded, FDelegateHandle& OutStaticDataAddedHandle,
		FDelegateHandle& OutFrameDataAddedHandle, TSubclassOf<ULiveLinkRole>& OutSubjectRole,
		FLiveLinkStaticDataStruct* OutStaticData = nullptr) = 0;
	virtual void UnregisterSubjectFramesHandle(FLiveLinkSubjectName InSubjectName,
		FDelegateHandle InStaticDataAddedHandle, FDelegateHandle InFrameDataAddedHandle) = 0;
};

// Copyright Orvane. All Rights Reserved.

#include "LiveLinkClient.h"

#include "HAL/PlatformProcess.h"
#include "HAL/PlatformTime.h"
#include "LiveLinkLog.h"
#include "LiveLinkSettings.h"
#include "LiveLinkSourceFactory.h"
#include "LiveLinkVirtualSubject.h"
#include "Misc/App.h"
#include "Misc/CoreDelegates.h"
#include "Misc/ScopeLock.h"
#include "Roles/LiveLinkCameraTypes.h"
#include "Roles/LiveLinkTransformTypes.h"
#include "UObject/Package.h"
#include "UObject/UObjectGlobals.h"
#include "UObject/UnrealType.h"

DEFINE_LOG_CATEGORY(LogLiveLink);

namespace LiveLinkClientPrivate
{
	/** The queue's cap for sources whose settings are not known yet; the settings' default. */
	constexpr int32 DefaultFrameCap = 10;

	int32 FrameCapOf(const ULiveLinkSourceSettings* Settings)
	{
		return Settings ? FMath::Max(1, Settings->BufferSettings.MaxNumberOfFrameToBuffered) : DefaultFrameCap;
	}

	double WorldTimeOf(const FLiveLinkFrameDataStruct& Frame)
	{
		return Frame.GetBaseData()->WorldTime.GetOffsettedTime();
	}

	double SceneSecondsOf(const FLiveLinkFrameDataStruct& Frame)
	{
		return Frame.GetBaseData()->MetaData.SceneTime.AsSeconds();
	}

	/** Out becomes A moved towards B by Alpha, for the parts of the frame each role knows how to blend. */
	void InterpolateFrames(const FLiveLinkFrameDataStruct& A, const FLiveLinkFrameDataStruct& B, double Alpha,
		FLiveLinkFrameDataStruct& Out)
	{
		Out.InitializeWith(A);
		FLiveLinkBaseFrameData& Result = *Out.GetBaseData();
		const FLiveLinkBaseFrameData& From = *A.GetBaseData();
		const FLiveLinkBaseFrameData& To = *B.GetBaseData();

		Result.WorldTime =
			FLiveLinkWorldTime(FMath::Lerp(From.WorldTime.GetSourceTime(), To.WorldTime.GetSourceTime(), Alpha),
				FMath::Lerp(From.WorldTime.GetOffset(), To.WorldTime.GetOffset(), Alpha));
		if (From.MetaData.SceneTime.Rate == To.MetaData.SceneTime.Rate)
		{
			Result.MetaData.SceneTime.Time = FFrameTime::FromDecimal(
				FMath::Lerp(From.MetaData.SceneTime.Time.AsDecimal(), To.MetaData.SceneTime.Time.AsDecimal(), Alpha));
		}
		if (From.PropertyValues.Num() == To.PropertyValues.Num())
		{
			for (int32 Index = 0; Index < Result.PropertyValues.Num(); ++Index)
			{
				Result.PropertyValues[Index] =
					FMath::Lerp(From.PropertyValues[Index], To.PropertyValues[Index], static_cast<float>(Alpha));
			}
		}

		const FLiveLinkTransformFrameData* FromTransform = A.Cast<FLiveLinkTransformFrameData>();
		const FLiveLinkTransformFrameData* ToTransform = B.Cast<FLiveLinkTransformFrameData>();
		if (FromTransform && ToTransform)
		{
			FTransform& Transform = Out.Cast<FLiveLinkTransformFrameData>()->Transform;
			Transform.SetTranslation(
				FMath::Lerp(FromTransform->Transform.GetTranslation(), ToTransform->Transform.GetTranslation(), Alpha));
			Transform.SetRotation(
				FQuat::Slerp(FromTransform->Transform.GetRotation(), ToTransform->Transform.GetRotation(), Alpha));
			Transform.SetScale3D(
				FMath::Lerp(FromTransform->Transform.GetScale3D(), ToTransform->Transform.GetScale3D(), Alpha));
		}

		const FLiveLinkCameraFrameData* FromCamera = A.Cast<FLiveLinkCameraFrameData>();
		const FLiveLinkCameraFrameData* ToCamera = B.Cast<FLiveLinkCameraFrameData>();
		if (FromCamera && ToCamera)
		{
			FLiveLinkCameraFrameData& Camera = *Out.Cast<FLiveLinkCameraFrameData>();
			const float FloatAlpha = static_cast<float>(Alpha);
			Camera.FieldOfView = FMath::Lerp(FromCamera->FieldOfView, ToCamera->FieldOfView, FloatAlpha);
			Camera.AspectRatio = FMath::Lerp(FromCamera->AspectRatio, ToCamera->AspectRatio, FloatAlpha);
			Camera.FocalLength = FMath::Lerp(FromCamera->FocalLength, ToCamera->FocalLength, FloatAlpha);
			Camera.Aperture = FMath::Lerp(FromCamera->Aperture, ToCamera->Aperture, FloatAlpha);
			Camera.FocusDistance = FMath::Lerp(FromCamera->FocusDistance, ToCamera->FocusDistance, FloatAlpha);
			// A projection cannot be half one and half the other: take the nearer frame's.
			Camera.ProjectionMode = Alpha < 0.5 ? FromCamera->ProjectionMode : ToCamera->ProjectionMode;
		}
	}

	/**
	 * The frame at a time: the two frames around it blended, the oldest frame for a time before every frame, the
	 * newest for a time after every frame. TimeOf gives a frame's time on the clock Time is on.
	 */
	template <typename TimeFunction>
	void PickFrameAtTime(
		const TArray<FLiveLinkFrameDataStruct>& Frames, double Time, TimeFunction TimeOf, FLiveLinkFrameDataStruct& Out)
	{
		int32 Before = INDEX_NONE;
		int32 After = INDEX_NONE;
		int32 Oldest = 0;
		for (int32 Index = 0; Index < Frames.Num(); ++Index)
		{
			const double FrameTime = TimeOf(Frames[Index]);
			if (FrameTime < TimeOf(Frames[Oldest]))
			{
				Oldest = Index;
			}
			if (FrameTime <= Time)
			{
				if (Before == INDEX_NONE || FrameTime >= TimeOf(Frames[Before]))
				{
					Before = Index;
				}
			}
			else if (After == INDEX_NONE || FrameTime < TimeOf(Frames[After]))
			{
				After = Index;
			}
		}
		if (Before == INDEX_NONE)
		{
			Out.InitializeWith(Frames[Oldest]);
			return;
		}
		if (After == INDEX_NONE)
		{
			Out.InitializeWith(Frames[Before]);
			return;
		}
		const double BeforeTime = TimeOf(Frames[Before]);
		const double Span = TimeOf(Frames[After]) - BeforeTime;
		InterpolateFrames(Frames[Before], Frames[After], Span > 0.0 ? (Time - BeforeTime) / Span : 0.0, Out);
	}

	/** The index after the last frame at or before Time, so frames stay in time order. */
	template <typename TimeFunction>
	int32 InsertionIndex(const TArray<FLiveLinkFrameDataStruct>& Frames, double Time, TimeFunction TimeOf)
	{
		int32 Index = Frames.Num();
		while (Index > 0 && TimeOf(Frames[Index - 1]) > Time)
		{
			--Index;
		}
		return Index;
	}

	/** Copies the properties two settings classes share (same name and type) from one object to another. */
	void CopyMatchingProperties(const UObject* From, UObject* To)
	{
		for (TFieldIterator<FProperty> It(To->GetClass()); It; ++It)
		{
			FProperty* ToProperty = *It;
			const FProperty* FromProperty = From->GetClass()->FindPropertyByName(ToProperty->GetFName());
			if (FromProperty && FromProperty->SameType(ToProperty))
			{
				FromProperty->CopyCompleteValue(
					ToProperty->ContainerPtrToValuePtr<void>(To), FromProperty->ContainerPtrToValuePtr<void>(From));
			}
		}
	}

	/** The timeout after which a subject without frames counts as no longer receiving. */
	double SubjectTimeout()
	{
		return GetDefault<ULiveLinkSettings>()->GetTimeWithoutFrameToBeConsiderAsInvalid();
	}
} // namespace LiveLinkClientPrivate

using namespace LiveLinkClientPrivate;

FLiveLinkClient::FLiveLinkClient()
{
	SamplingInputHandle = FCoreDelegates::OnSamplingInput.AddRaw(this, &FLiveLinkClient::Tick);
}

FLiveLinkClient::~FLiveLinkClient()
{
	FCoreDelegates::OnSamplingInput.Remove(SamplingInputHandle);
	bool bHasSources = false;
	{
		FScopeLock Lock(&CollectionLock);
		bHasSources = Sources.Num() > 0;
	}
	if (bHasSources)
	{
		Shutdown();
	}
}

// ------------------------------------------------------------------------------------------------
// Ticking

void FLiveLinkClient::Tick()
{
	CachedAppTime = FApp::GetCurrentTime();
	CachedPlatformTimeAnyThread.store(FPlatformTime::Seconds());

	FTickChanges Changes;
	RefreshSourceFrameCaps();
	ApplyPendingData(Changes);
	DropExpiredFrames();

	// Sources are called without the collection lock: they may call back into the client, or wait for a thread
	// of theirs that evaluates subjects.
	TArray<TSharedPtr<ILiveLinkSource>> ToUpdate;
	TArray<TPair<FGuid, TSharedPtr<ILiveLinkSource>>> ToPoll;
	{
		FScopeLock Lock(&CollectionLock);
		for (const FSourceItem& Item : Sources)
		{
			if (Item.bPendingKill)
			{
				ToPoll.Add(TPair<FGuid, TSharedPtr<ILiveLinkSource>>(Item.Guid, Item.Source));
			}
			else
			{
				ToUpdate.Add(Item.Source);
			}
		}
	}
	for (const TSharedPtr<ILiveLinkSource>& Source : ToUpdate)
	{
		Source->Update();
	}
	for (const TPair<FGuid, TSharedPtr<ILiveLinkSource>>& Entry : ToPoll)
	{
		if (Entry.Value->RequestSourceShutdown())
		{
			RemoveSourceItem(Entry.Key, Changes);
		}
	}
	ToUpdate.Reset();
	ToPoll.Reset();

	BroadcastChanges(Changes);
	OnLiveLinkTickedDelegate.Broadcast();
}

void FLiveLinkClient::RefreshSourceFrameCaps()
{
	TArray<TPair<FGuid, int32>> Caps;
	{
		FScopeLock Lock(&CollectionLock);
		for (const FSourceItem& Item : Sources)
		{
			Caps.Add(TPair<FGuid, int32>(Item.Guid, FrameCapOf(Item.Settings.Get())));
		}
	}
	FScopeLock Lock(&PendingLock);
	for (const TPair<FGuid, int32>& Cap : Caps)
	{
		SourceFrameCaps.Add(Cap.Key, Cap.Value);
	}
}

void FLiveLinkClient::ApplyPendingData(FTickChanges& Changes)
{
	TMap<FLiveLinkSubjectKey, FPendingSubject> Taken;
	TArray<FLiveLinkSubjectKey> Announced;
	bool bClearAll = false;
	{
		FScopeLock Lock(&PendingLock);
		Taken = MoveTemp(PendingSubjects);
		PendingSubjects.Reset();
		bClearAll = bClearAllPending;
		bClearAllPending = false;
		// A subject whose static data is being applied takes frames pushed while this tick runs; otherwise they
		// would find neither pending static data nor a known subject, and be dropped.
		for (const TPair<FLiveLinkSubjectKey, FPendingSubject>& Entry : Taken)
		{
			if (Entry.Value.bHasStaticData && !KnownSubjects.Contains(Entry.Key))
			{
				KnownSubjects.Add(Entry.Key);
				Announced.Add(Entry.Key);
			}
		}
	}

	FScopeLock Lock(&CollectionLock);
	if (bClearAll)
	{
		for (FSubjectItem& Subject : Subjects)
		{
			Subject.Frames.Reset();
		}
	}
	for (TPair<FLiveLinkSubjectKey, FPendingSubject>& Entry : Taken)
	{
		const FLiveLinkSubjectKey& Key = Entry.Key;
		FPendingSubject& Pending = Entry.Value;
		if (Pending.bRemove)
		{
			const int32 Index = Subjects.IndexOfByPredicate(
				[&Key](const FSubjectItem& Subject)
				{
					return Subject.Key == Key;
				});
			if (Index != INDEX_NONE)
			{
				Subjects.RemoveAt(Index);
				Changes.RemovedSubjects.Add(Key);
			}
		}
		if (Pending.bHasStaticData)
		{
			ApplyStaticData(Key, Pending, Changes);
		}
		if (Pending.bClearFrames)
		{
			if (FSubjectItem* Subject = FindSubject(Key))
			{
				Subject->Frames.Reset();
			}
		}
		if (Pending.Frames.Num() > 0)
		{
			ApplyFrames(Key, Pending);
		}
	}

	// Frames pushed from now on are accepted only for subjects that can take them.
	FScopeLock PendingScope(&PendingLock);
	for (const FLiveLinkSubjectKey& Removed : Changes.RemovedSubjects)
	{
		KnownSubjects.Remove(Removed);
	}
	for (const FLiveLinkSubjectKey& Key : Announced)
	{
		const FSubjectItem* Subject = FindSubject(Key);
		if (Subject == nullptr || !Subject->StaticData.IsValid())
		{
			KnownSubjects.Remove(Key);
		}
	}
	for (const FSubjectItem& Subject : Subjects)
	{
		if (Subject.StaticData.IsValid())
		{
			KnownSubjects.Add(Subject.Key);
		}
	}
}

void FLiveLinkClient::ApplyStaticData(const FLiveLinkSubjectKey& Key, FPendingSubject& Pending, FTickChanges& Changes)
{
	if (FindSource(Key.Source) == nullptr)
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Static data for subject '%s' was dropped: its source %s is not registered."),
			*Key.SubjectName.ToString(), *Key.Source.ToString());
		return;
	}
	const ULiveLinkRole* Role = Pending.Role.GetDefaultObject();
	bool bShouldLogWarning = true;
	if (Role == nullptr || !Role->IsStaticDataValid(Pending.StaticData, bShouldLogWarning))
	{
		if (bShouldLogWarning)
		{
			UE_LOG(LogLiveLink, Warning,
				TEXT("Static data for subject '%s' was dropped: it is not valid for the role '%s'."),
				*Key.SubjectName.ToString(), Role ? *Role->GetClass()->GetName() : TEXT("None"));
		}
		return;
	}

	FSubjectItem* Subject = FindSubject(Key);
	if (Subject && Subject->Role.Get() != Pending.Role.Get())
	{
		// A subject keeps its role for life: a new role makes it a new subject.
		const bool bWasEnabled = Subject->bEnabled;
		Subjects.RemoveAll(
			[&Key](const FSubjectItem& Item)
			{
				return Item.Key == Key;
			});
		Changes.RemovedSubjects.Add(Key);
		Subject = nullptr;
		FSubjectItem NewSubject;
		NewSubject.Key = Key;
		NewSubject.bEnabled = bWasEnabled;
		Subject = &Subjects.Add_GetRef(MoveTemp(NewSubject));
		Changes.AddedSubjects.Add(Key);
	}
	else if (Subject == nullptr)
	{
		FSubjectItem NewSubject;
		NewSubject.Key = Key;
		NewSubject.bEnabled = FindEnabledSubject(Key.SubjectName) == nullptr;
		Subject = &Subjects.Add_GetRef(MoveTemp(NewSubject));
		Changes.AddedSubjects.Add(Key);
	}

	Subject->Role = Pending.Role;
	Subject->StaticData = MoveTemp(Pending.StaticData);
	Subject->Frames.Reset();
	if (!Subject->Settings.IsValid())
	{
		ULiveLinkSubjectSettings* Settings =
			NewObject<ULiveLinkSubjectSettings>(GetTransientPackage(), ULiveLinkSubjectSettings::StaticClass(),
				MakeUniqueObjectName(GetTransientPackage(), ULiveLinkSubjectSettings::StaticClass()));
		Subject->Settings.Reset(Settings);
	}
	Subject->Settings->Role = Pending.Role;

	if (FAddedDelegates* Delegates = AddedDelegates.Find(Key.SubjectName))
	{
		Delegates->OnStaticDataAdded.Broadcast(Key, Subject->Role, Subject->StaticData);
	}
}

void FLiveLinkClient::ApplyFrames(const FLiveLinkSubjectKey& Key, FPendingSubject& Pending)
{
	FSubjectItem* Subject = FindSubject(Key);
	if (Subject == nullptr || !Subject->StaticData.IsValid())
	{
		// Frames mean nothing without the static data that describes them.
		return;
	}
	const FSourceItem* Source = FindSource(Key.Source);
	const ULiveLinkSourceSettings* Settings = Source ? Source->Settings.Get() : nullptr;
	const ELiveLinkSourceMode Mode = Settings ? Settings->Mode : ELiveLinkSourceMode::EngineTime;
	const int32 Cap = FrameCapOf(Settings);
	const ULiveLinkRole* Role = Subject->Role.GetDefaultObject();
	FAddedDelegates* Delegates = AddedDelegates.Find(Key.SubjectName);

	bool bAddedAny = false;
	for (FLiveLinkFrameDataStruct& Frame : Pending.Frames)
	{
		bool bShouldLogWarning = true;
		if (Role == nullptr || !Role->IsFrameDataValid(Subject->StaticData, Frame, bShouldLogWarning))
		{
			if (bShouldLogWarning)
			{
				UE_LOG(LogLiveLink, Warning,
					TEXT(
						"A frame of subject '%s' was dropped: it is not valid for the subject's role and static data."),
					*Key.SubjectName.ToString());
			}
			continue;
		}
		FLiveLinkBaseFrameData& Data = *Frame.GetBaseData();
		Data.FrameId = NextFrameId++;
		Data.ArrivalTime = FLiveLinkTime(CachedPlatformTimeAnyThread.load(), FQualifiedFrameTime());

		int32 Index = Subject->Frames.Num();
		if (Mode == ELiveLinkSourceMode::EngineTime)
		{
			Index = InsertionIndex(Subject->Frames, WorldTimeOf(Frame), &WorldTimeOf);
		}
		else if (Mode == ELiveLinkSourceMode::Timecode)
		{
			Index = InsertionIndex(Subject->Frames, SceneSecondsOf(Frame), &SceneSecondsOf);
		}
		Subject->Frames.Insert(MoveTemp(Frame), Index);
		bAddedAny = true;
		if (Delegates)
		{
			Delegates->OnFrameDataAdded.Broadcast(Key, Subject->Role, Subject->Frames[Index]);
		}
		if (Subject->Frames.Num() > Cap)
		{
			Subject->Frames.RemoveAt(0, Subject->Frames.Num() - Cap);
		}
	}
	if (bAddedAny)
	{
		Subject->LastFrameAppTime = CachedAppTime;
		Subject->bHasReceivedFrame = true;
	}
}

void FLiveLinkClient::DropExpiredFrames()
{
	const double Now = CachedPlatformTimeAnyThread.load();
	FScopeLock Lock(&CollectionLock);
	for (FSubjectItem& Subject : Subjects)
	{
		const FSourceItem* Source = FindSource(Subject.Key.Source);
		const ULiveLinkSourceSettings* Settings = Source ? Source->Settings.Get() : nullptr;
		if (Settings == nullptr || Settings->Mode != ELiveLinkSourceMode::EngineTime ||
			!Settings->BufferSettings.bValidEngineTimeEnabled)
		{
			continue;
		}
		const double OldestValid = Now - Settings->BufferSettings.ValidEngineTime;
		int32 Newest = INDEX_NONE;
		for (int32 Index = 0; Index < Subject.Frames.Num(); ++Index)
		{
			if (Newest == INDEX_NONE || WorldTimeOf(Subject.Frames[Index]) >= WorldTimeOf(Subject.Frames[Newest]))
			{
				Newest = Index;
			}
		}
		const bool bKeepNewest = Settings->BufferSettings.bKeepAtLeastOneFrame;
		for (int32 Index = Subject.Frames.Num() - 1; Index >= 0; --Index)
		{
			if (WorldTimeOf(Subject.Frames[Index]) < OldestValid && !(bKeepNewest && Index == Newest))
			{
				Subject.Frames.RemoveAt(Index);
			}
		}
	}
}

void FLiveLinkClient::BroadcastChanges(const FTickChanges& Changes)
{
	for (const FGuid& Guid : Changes.RemovedSources)
	{
		OnLiveLinkSourceRemovedDelegate.Broadcast(Guid);
	}
	if (Changes.RemovedSources.Num() > 0)
	{
		OnLiveLinkSourcesChangedDelegate.Broadcast();
	}
	for (const FLiveLinkSubjectKey& Key : Changes.RemovedSubjects)
	{
		OnLiveLinkSubjectRemovedDelegate.Broadcast(Key);
	}
	for (const FLiveLinkSubjectKey& Key : Changes.AddedSubjects)
	{
		OnLiveLinkSubjectAddedDelegate.Broadcast(Key);
	}
	if (Changes.RemovedSubjects.Num() > 0 || Changes.AddedSubjects.Num() > 0)
	{
		OnLiveLinkSubjectsChangedDelegate.Broadcast();
	}
}

// ------------------------------------------------------------------------------------------------
// Sources

FGuid FLiveLinkClient::AddSource(TSharedPtr<ILiveLinkSource> Source)
{
	if (!Source.IsValid())
	{
		UE_LOG(LogLiveLink, Warning, TEXT("AddSource: the source is null."));
		return FGuid();
	}
	{
		FScopeLock Lock(&CollectionLock);
		for (const FSourceItem& Item : Sources)
		{
			if (Item.Source == Source)
			{
				UE_LOG(LogLiveLink, Warning, TEXT("AddSource: the source was already added as %s."),
					*Item.Guid.ToString());
				return Item.Guid;
			}
		}
	}
	UClass* SettingsClass = Source->GetSettingsClass().Get();
	if (SettingsClass == nullptr)
	{
		SettingsClass = ULiveLinkSourceSettings::StaticClass();
	}
	ULiveLinkSourceSettings* Settings = NewObject<ULiveLinkSourceSettings>(
		GetTransientPackage(), SettingsClass, MakeUniqueObjectName(GetTransientPackage(), SettingsClass));
	const FGuid Guid = FGuid::NewGuid();
	RegisterSource(Guid, Source, Settings);
	return Guid;
}

void FLiveLinkClient::RegisterSource(
	const FGuid& Guid, TSharedPtr<ILiveLinkSource> Source, ULiveLinkSourceSettings* Settings)
{
	{
		FScopeLock Lock(&CollectionLock);
		FSourceItem Item;
		Item.Guid = Guid;
		Item.Source = Source;
		Item.Settings.Reset(Settings);
		Sources.Add(MoveTemp(Item));
	}
	{
		FScopeLock Lock(&PendingLock);
		SourceFrameCaps.Add(Guid, FrameCapOf(Settings));
	}
	// The source is registered first, so it can push and read its settings from ReceiveClient on.
	Source->ReceiveClient(this, Guid);
	Source->InitializeSettings(Settings);
	{
		FScopeLock Lock(&PendingLock);
		SourceFrameCaps.Add(Guid, FrameCapOf(Settings));
	}
	OnLiveLinkSourceAddedDelegate.Broadcast(Guid);
	OnLiveLinkSourcesChangedDelegate.Broadcast();
}

FGuid FLiveLinkClient::AddVirtualSubjectSource(FName SourceName)
{
	UE_HEADLESS_UNIMPLEMENTED();
	return FGuid();
}

bool FLiveLinkClient::CreateSource(const FLiveLinkSourcePreset& SourcePreset)
{
	if (SourcePreset.Settings == nullptr)
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Create Source Failure: The settings are not defined."));
		return false;
	}
	if (!SourcePreset.Guid.IsValid())
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Create Source Failure: The guid is invalid."));
		return false;
	}
	{
		FScopeLock Lock(&CollectionLock);
		if (FindSource(SourcePreset.Guid) != nullptr)
		{
			UE_LOG(LogLiveLink, Warning, TEXT("Create Source Failure: The guid already exist."));
			return false;
		}
	}
	const TSubclassOf<ULiveLinkSourceFactory> Factory = SourcePreset.Settings->Factory;
	if (Factory.Get() == nullptr || Factory.Get() == ULiveLinkSourceFactory::StaticClass())
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Create Source Failure: The factory is not defined."));
		return false;
	}
	TSharedPtr<ILiveLinkSource> Source =
		Factory.GetDefaultObject()->CreateSource(SourcePreset.Settings->ConnectionString);
	if (!Source.IsValid())
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Create Source Failure: The source couldn't be created by the factory."));
		return false;
	}
	ULiveLinkSourceSettings* Settings = MakeSettingsFromPreset(SourcePreset.Settings, Source->GetSettingsClass());
	RegisterSource(SourcePreset.Guid, Source, Settings);
	return true;
}

ULiveLinkSourceSettings* FLiveLinkClient::MakeSettingsFromPreset(
	const ULiveLinkSourceSettings* PresetSettings, TSubclassOf<ULiveLinkSourceSettings> SettingsClass) const
{
	UClass* Class = SettingsClass.Get() ? SettingsClass.Get() : ULiveLinkSourceSettings::StaticClass();
	UObject* Outer = GetTransientPackage();
	const FName Name = MakeUniqueObjectName(Outer, Class);
	if (PresetSettings->GetClass() == Class)
	{
		return DuplicateObject<ULiveLinkSourceSettings>(PresetSettings, Outer, Name);
	}
	// The source now uses another settings class: keep what the two classes have in common.
	ULiveLinkSourceSettings* Settings = NewObject<ULiveLinkSourceSettings>(Outer, Class, Name);
	CopyMatchingProperties(PresetSettings, Settings);
	return Settings;
}

void FLiveLinkClient::RemoveSource(TSharedPtr<ILiveLinkSource> Source)
{
	FScopeLock Lock(&CollectionLock);
	for (FSourceItem& Item : Sources)
	{
		if (Item.Source == Source)
		{
			Item.bPendingKill = true;
		}
	}
}

void FLiveLinkClient::RemoveSource(FGuid InEntryGuid)
{
	FScopeLock Lock(&CollectionLock);
	if (FSourceItem* Item = FindSource(InEntryGuid))
	{
		Item->bPendingKill = true;
	}
}

void FLiveLinkClient::RemoveAllSources()
{
	FScopeLock Lock(&CollectionLock);
	for (FSourceItem& Item : Sources)
	{
		Item.bPendingKill = true;
	}
}

void FLiveLinkClient::RemoveSourceItem(const FGuid& SourceGuid, FTickChanges& Changes)
{
	TSharedPtr<ILiveLinkSource> Released;
	TMap<FLiveLinkSubjectKey, FPendingSubject> DroppedPending;
	{
		FScopeLock Lock(&CollectionLock);
		const int32 Index = Sources.IndexOfByPredicate(
			[&SourceGuid](const FSourceItem& Item)
			{
				return Item.Guid == SourceGuid;
			});
		if (Index == INDEX_NONE)
		{
			return;
		}
		Released = Sources[Index].Source;
		Sources.RemoveAt(Index);
		for (int32 SubjectIndex = Subjects.Num() - 1; SubjectIndex >= 0; --SubjectIndex)
		{
			if (Subjects[SubjectIndex].Key.Source == SourceGuid)
			{
				Changes.RemovedSubjects.Add(Subjects[SubjectIndex].Key);
				Subjects.RemoveAt(SubjectIndex);
			}
		}
		FScopeLock PendingScope(&PendingLock);
		SourceFrameCaps.Remove(SourceGuid);
		for (auto It = PendingSubjects.CreateIterator(); It; ++It)
		{
			if (It->Key.Source == SourceGuid)
			{
				DroppedPending.Add(It->Key, MoveTemp(It->Value));
				It.RemoveCurrent();
			}
		}
		for (auto It = KnownSubjects.CreateIterator(); It; ++It)
		{
			if (It->Source == SourceGuid)
			{
				It.RemoveCurrent();
			}
		}
	}
	Changes.RemovedSources.Add(SourceGuid);
	// The source (and any data it still had queued) is destroyed here, outside every lock.
}

void FLiveLinkClient::Shutdown(double MaxWaitSeconds)
{
	RemoveAllSources();
	const double Deadline = FPlatformTime::Seconds() + MaxWaitSeconds;
	FTickChanges Changes;
	while (true)
	{
		TArray<TPair<FGuid, TSharedPtr<ILiveLinkSource>>> Remaining;
		{
			FScopeLock Lock(&CollectionLock);
			for (const FSourceItem& Item : Sources)
			{
				Remaining.Add(TPair<FGuid, TSharedPtr<ILiveLinkSource>>(Item.Guid, Item.Source));
			}
		}
		if (Remaining.Num() == 0)
		{
			break;
		}
		const bool bOutOfTime = FPlatformTime::Seconds() >= Deadline;
		for (const TPair<FGuid, TSharedPtr<ILiveLinkSource>>& Entry : Remaining)
		{
			if (Entry.Value->RequestSourceShutdown())
			{
				RemoveSourceItem(Entry.Key, Changes);
			}
			else if (bOutOfTime)
			{
				UE_LOG(LogLiveLink, Error,
					TEXT("The Live Link source %s ('%s') did not agree to shut down within %.1f seconds; it is "
						 "released anyway."),
					*Entry.Key.ToString(), *Entry.Value->GetSourceType().ToString(), MaxWaitSeconds);
				RemoveSourceItem(Entry.Key, Changes);
			}
		}
		if (!bOutOfTime)
		{
			FPlatformProcess::Sleep(0.001f);
		}
	}
	BroadcastChanges(Changes);
}

bool FLiveLinkClient::HasSourceBeenAdded(TSharedPtr<ILiveLinkSource> Source) const
{
	FScopeLock Lock(&CollectionLock);
	return Sources.ContainsByPredicate(
		[&Source](const FSourceItem& Item)
		{
			return Item.Source == Source;
		});
}

TArray<FGuid> FLiveLinkClient::GetSources(bool bEvenIfPendingKill) const
{
	TArray<FGuid> Result;
	FScopeLock Lock(&CollectionLock);
	for (const FSourceItem& Item : Sources)
	{
		if (bEvenIfPendingKill || !Item.bPendingKill)
		{
			Result.Add(Item.Guid);
		}
	}
	return Result;
}

TArray<FGuid> FLiveLinkClient::GetVirtualSources(bool bEvenIfPendingKill) const
{
	// Virtual-subject sources cannot be added (AddVirtualSubjectSource is not implemented), so there are none.
	return TArray<FGuid>();
}

TArray<FGuid> FLiveLinkClient::GetDisplayableSources(bool bIncludeVirtualSources) const
{
	TArray<FGuid> Result;
	FScopeLock Lock(&CollectionLock);
	for (const FSourceItem& Item : Sources)
	{
		if (!Item.bPendingKill && Item.Source->CanBeDisplayedInUI())
		{
			Result.Add(Item.Guid);
		}
	}
	return Result;
}

FLiveLinkSourcePreset FLiveLinkClient::GetSourcePreset(FGuid SourceGuid, UObject* DuplicatedObjectOuter) const
{
	FLiveLinkSourcePreset Preset;
	FScopeLock Lock(&CollectionLock);
	const FSourceItem* Item = FindSource(SourceGuid);
	if (Item == nullptr || Item->bPendingKill)
	{
		return Preset;
	}
	UObject* Outer = DuplicatedObjectOuter ? DuplicatedObjectOuter : GetTransientPackage();
	const ULiveLinkSourceSettings* Settings = Item->Settings.Get();
	Preset.Guid = Item->Guid;
	Preset.Settings =
		DuplicateObject<ULiveLinkSourceSettings>(Settings, Outer, MakeUniqueObjectName(Outer, Settings->GetClass()));
	Preset.SourceType = Item->Source->CanBeDisplayedInUI() ? Item->Source->GetSourceType() : FText::GetEmpty();
	return Preset;
}

FText FLiveLinkClient::GetSourceType(FGuid EntryGuid) const
{
	FScopeLock Lock(&CollectionLock);
	const FSourceItem* Item = FindSource(EntryGuid);
	return Item ? Item->Source->GetSourceType() : FText::GetEmpty();
}

FText FLiveLinkClient::GetSourceStatus(FGuid EntryGuid) const
{
	FScopeLock Lock(&CollectionLock);
	const FSourceItem* Item = FindSource(EntryGuid);
	return Item ? Item->Source->GetSourceStatus() : FText::GetEmpty();
}

FText FLiveLinkClient::GetSourceMachineName(FGuid EntryGuid) const
{
	FScopeLock Lock(&CollectionLock);
	const FSourceItem* Item = FindSource(EntryGuid);
	return Item ? Item->Source->GetSourceMachineName() : FText::GetEmpty();
}

bool FLiveLinkClient::IsSourceStillValid(FGuid EntryGuid) const
{
	FScopeLock Lock(&CollectionLock);
	const FSourceItem* Item = FindSource(EntryGuid);
	return Item && Item->Source->IsSourceStillValid();
}

ULiveLinkSourceSettings* FLiveLinkClient::GetSourceSettings(const FGuid& SourceKey) const
{
	FScopeLock Lock(&CollectionLock);
	const FSourceItem* Item = FindSource(SourceKey);
	return Item ? Item->Settings.Get() : nullptr;
}

// ------------------------------------------------------------------------------------------------
// Pushing

void FLiveLinkClient::PushSubjectStaticData_AnyThread(
	const FLiveLinkSubjectKey& SubjectKey, TSubclassOf<ULiveLinkRole> Role, FLiveLinkStaticDataStruct&& StaticData)
{
	if (Role.Get() == nullptr || !StaticData.IsValid())
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Static data for subject '%s' was dropped: %s."),
			*SubjectKey.SubjectName.ToString(), Role.Get() == nullptr ? TEXT("it has no role") : TEXT("it is empty"));
		return;
	}
	if (bHasReceivedDelegates.load())
	{
		FScopeLock Lock(&ReceivedDelegatesLock);
		if (FReceivedDelegates* Delegates = ReceivedDelegates.Find(SubjectKey))
		{
			Delegates->OnStaticDataReceived.Broadcast(SubjectKey, Role, StaticData);
		}
	}

	// Whatever the queue drops is destroyed after the lock is released.
	FPendingSubject Replaced;
	{
		FScopeLock Lock(&PendingLock);
		if (!SourceFrameCaps.Contains(SubjectKey.Source))
		{
			return;
		}
		FPendingSubject& Pending = PendingSubjects.FindOrAdd(SubjectKey);
		Replaced.StaticData = MoveTemp(Pending.StaticData);
		Replaced.Frames = MoveTemp(Pending.Frames);
		Pending.Frames.Reset();
		Pending.bHasStaticData = true;
		Pending.bClearFrames = false;
		Pending.Role = Role;
		Pending.StaticData = MoveTemp(StaticData);
	}
}

void FLiveLinkClient::PushSubjectFrameData_AnyThread(
	const FLiveLinkSubjectKey& SubjectKey, FLiveLinkFrameDataStruct&& FrameData)
{
	if (!FrameData.IsValid())
	{
		return;
	}
	if (bHasReceivedDelegates.load())
	{
		FScopeLock Lock(&ReceivedDelegatesLock);
		if (FReceivedDelegates* Delegates = ReceivedDelegates.Find(SubjectKey))
		{
			Delegates->OnFrameDataReceived.Broadcast(SubjectKey, FrameData);
		}
	}

	TArray<FLiveLinkFrameDataStruct> Dropped;
	{
		FScopeLock Lock(&PendingLock);
		const int32* Cap = SourceFrameCaps.Find(SubjectKey.Source);
		FPendingSubject* Pending = PendingSubjects.Find(SubjectKey);
		const bool bAccepted =
			Cap != nullptr && ((Pending && Pending->bHasStaticData) || KnownSubjects.Contains(SubjectKey));
		if (!bAccepted)
		{
			// No static data describes the frame: it is dropped, as it would be on the next tick.
			return;
		}
		if (Pending == nullptr)
		{
			Pending = &PendingSubjects.Add(SubjectKey);
		}
		if (Pending->Frames.Num() == 0)
		{
			Pending->Frames.Reserve(2 * *Cap);
		}
		Pending->Frames.Add(MoveTemp(FrameData));
		// Only the newest Cap frames would survive the next tick: trim in batches so a push stays O(1).
		if (Pending->Frames.Num() >= 2 * *Cap)
		{
			Dropped = MoveTemp(Pending->Frames);
			Pending->Frames.Reset();
			Pending->Frames.Reserve(2 * *Cap);
			for (int32 Index = Dropped.Num() - *Cap; Index < Dropped.Num(); ++Index)
			{
				Pending->Frames.Add(MoveTemp(Dropped[Index]));
			}
		}
	}
}

void FLiveLinkClient::RemoveSubject_AnyThread(const FLiveLinkSubjectKey& SubjectKey)
{
	FPendingSubject Replaced;
	FScopeLock Lock(&PendingLock);
	FPendingSubject& Pending = PendingSubjects.FindOrAdd(SubjectKey);
	Replaced.StaticData = MoveTemp(Pending.StaticData);
	Replaced.Frames = MoveTemp(Pending.Frames);
	Pending.Frames.Reset();
	Pending.bRemove = true;
	Pending.bHasStaticData = false;
	Pending.bClearFrames = false;
	KnownSubjects.Remove(SubjectKey);
}

void FLiveLinkClient::ClearSubjectsFrames_AnyThread(FLiveLinkSubjectName SubjectName)
{
	TOptional<FLiveLinkSubjectKey> Key;
	{
		FScopeLock Lock(&CollectionLock);
		if (const FSubjectItem* Subject = FindEnabledSubject(SubjectName))
		{
			Key = Subject->Key;
		}
	}
	if (Key.IsSet())
	{
		ClearSubjectsFrames_AnyThread(Key.GetValue());
	}
}

void FLiveLinkClient::ClearSubjectsFrames_AnyThread(const FLiveLinkSubjectKey& SubjectKey)
{
	TArray<FLiveLinkFrameDataStruct> Dropped;
	FScopeLock Lock(&PendingLock);
	FPendingSubject& Pending = PendingSubjects.FindOrAdd(SubjectKey);
	Dropped = MoveTemp(Pending.Frames);
	Pending.Frames.Reset();
	Pending.bClearFrames = true;
}

void FLiveLinkClient::ClearAllSubjectsFrames_AnyThread()
{
	TMap<FLiveLinkSubjectKey, FPendingSubject> Dropped;
	FScopeLock Lock(&PendingLock);
	for (TPair<FLiveLinkSubjectKey, FPendingSubject>& Entry : PendingSubjects)
	{
		FPendingSubject& Moved = Dropped.Add(Entry.Key);
		Moved.Frames = MoveTemp(Entry.Value.Frames);
		Entry.Value.Frames.Reset();
	}
	bClearAllPending = true;
}

bool FLiveLinkClient::HasPendingSubjectFrames()
{
	FScopeLock Lock(&PendingLock);
	for (const TPair<FLiveLinkSubjectKey, FPendingSubject>& Entry : PendingSubjects)
	{
		if (Entry.Value.Frames.Num() > 0)
		{
			return true;
		}
	}
	return false;
}

// ------------------------------------------------------------------------------------------------
// Subjects

bool FLiveLinkClient::CreateSubject(const FLiveLinkSubjectPreset& SubjectPreset)
{
	if (SubjectPreset.VirtualSubject != nullptr)
	{
		UE_HEADLESS_UNIMPLEMENTED();
		return false;
	}
	if (SubjectPreset.Role.Get() == nullptr)
	{
		UE_LOG(LogLiveLink, Warning, TEXT("Create Subject Failure: The role of subject '%s' is not defined."),
			*SubjectPreset.Key.SubjectName.ToString());
		return false;
	}
	{
		FScopeLock Lock(&CollectionLock);
		const FSourceItem* Source = FindSource(SubjectPreset.Key.Source);
		if (Source == nullptr || Source->bPendingKill)
		{
			UE_LOG(LogLiveLink, Warning, TEXT("Create Subject Failure: The source of subject '%s' doesn't exist."),
				*SubjectPreset.Key.SubjectName.ToString());
			return false;
		}
		if (FindSubject(SubjectPreset.Key) != nullptr)
		{
			UE_LOG(LogLiveLink, Warning, TEXT("Create Subject Failure: The subject '%s' already exist."),
				*SubjectPreset.Key.SubjectName.ToString());
			return false;
		}
		if (SubjectPreset.bEnabled)
		{
			for (FSubjectItem& Other : Subjects)
			{
				if (Other.Key.SubjectName == SubjectPreset.Key.SubjectName)
				{
					Other.bEnabled = false;
				}
			}
		}
		FSubjectItem Subject;
		Subject.Key = SubjectPreset.Key;
		Subject.Role = SubjectPreset.Role;
		Subject.bEnabled = SubjectPreset.bEnabled;
		UObject* Outer = GetTransientPackage();
		ULiveLinkSubjectSettings* Settings =
			SubjectPreset.Settings ? DuplicateObject<ULiveLinkSubjectSettings>(SubjectPreset.Settings, Outer,
										 MakeUniqueObjectName(Outer, SubjectPreset.Settings->GetClass()))
								   : NewObject<ULiveLinkSubjectSettings>(Outer, ULiveLinkSubjectSettings::StaticClass(),
										 MakeUniqueObjectName(Outer, ULiveLinkSubjectSettings::StaticClass()));
		Settings->Role = SubjectPreset.Role;
		Subject.Settings.Reset(Settings);
		Subjects.Add(MoveTemp(Subject));
	}
	OnLiveLinkSubjectAddedDelegate.Broadcast(SubjectPreset.Key);
	OnLiveLinkSubjectsChangedDelegate.Broadcast();
	return true;
}

bool FLiveLinkClient::AddVirtualSubject(
	const FLiveLinkSubjectKey& VirtualSubjectKey, TSubclassOf<ULiveLinkVirtualSubject> VirtualSubjectClass)
{
	UE_HEADLESS_UNIMPLEMENTED();
	return false;
}

void FLiveLinkClient::RemoveVirtualSubject(const FLiveLinkSubjectKey& VirtualSubjectKey)
{
	UE_HEADLESS_UNIMPLEMENTED();
}

FLiveLinkSubjectPreset FLiveLinkClient::GetSubjectPreset(
	const FLiveLinkSubjectKey& SubjectKey, UObject* DuplicatedObjectOuter) const
{
	FLiveLinkSubjectPreset Preset;
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	if (Subject == nullptr)
	{
		return Preset;
	}
	UObject* Outer = DuplicatedObjectOuter ? DuplicatedObjectOuter : GetTransientPackage();
	Preset.Key = Subject->Key;
	Preset.Role = Subject->Role;
	Preset.bEnabled = Subject->bEnabled;
	if (const ULiveLinkSubjectSettings* Settings = Subject->Settings.Get())
	{
		Preset.Settings = DuplicateObject<ULiveLinkSubjectSettings>(
			Settings, Outer, MakeUniqueObjectName(Outer, Settings->GetClass()));
	}
	return Preset;
}

TArray<FLiveLinkSubjectKey> FLiveLinkClient::GetSubjects(
	bool bIncludeDisabledSubject, bool bIncludeVirtualSubject) const
{
	TArray<FLiveLinkSubjectKey> Result;
	FScopeLock Lock(&CollectionLock);
	for (const FSubjectItem& Subject : Subjects)
	{
		if (bIncludeDisabledSubject || Subject.bEnabled)
		{
			Result.Add(Subject.Key);
		}
	}
	return Result;
}

bool FLiveLinkClient::IsSubjectReceiving(const FSubjectItem& Subject) const
{
	return Subject.bHasReceivedFrame && FApp::GetCurrentTime() - Subject.LastFrameAppTime <= SubjectTimeout();
}

bool FLiveLinkClient::IsSubjectValid(const FLiveLinkSubjectKey& SubjectKey) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	return Subject && Subject->StaticData.IsValid() && Subject->Frames.Num() > 0 && IsSubjectReceiving(*Subject);
}

bool FLiveLinkClient::IsSubjectValid(FLiveLinkSubjectName SubjectName) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	return Subject && Subject->StaticData.IsValid() && Subject->Frames.Num() > 0 && IsSubjectReceiving(*Subject);
}

bool FLiveLinkClient::IsSubjectEnabled(const FLiveLinkSubjectKey& SubjectKey, bool bForThisFrame) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	return Subject && Subject->bEnabled;
}

bool FLiveLinkClient::IsSubjectEnabled(FLiveLinkSubjectName SubjectName) const
{
	FScopeLock Lock(&CollectionLock);
	return FindEnabledSubject(SubjectName) != nullptr;
}

void FLiveLinkClient::SetSubjectEnabled(const FLiveLinkSubjectKey& SubjectKey, bool bEnabled)
{
	FScopeLock Lock(&CollectionLock);
	FSubjectItem* Subject = FindSubject(SubjectKey);
	if (Subject == nullptr)
	{
		return;
	}
	if (bEnabled)
	{
		// One enabled subject per name: enabling one disables the others of that name.
		for (FSubjectItem& Other : Subjects)
		{
			if (Other.Key.SubjectName == SubjectKey.SubjectName)
			{
				Other.bEnabled = false;
			}
		}
	}
	Subject->bEnabled = bEnabled;
}

bool FLiveLinkClient::IsSubjectTimeSynchronized(const FLiveLinkSubjectKey& SubjectKey) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	const FSourceItem* Source = Subject ? FindSource(Subject->Key.Source) : nullptr;
	return Source && Source->Settings.IsValid() && Source->Settings->Mode == ELiveLinkSourceMode::Timecode;
}

bool FLiveLinkClient::IsSubjectTimeSynchronized(FLiveLinkSubjectName SubjectName) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	return Subject && IsSubjectTimeSynchronized(Subject->Key);
}

bool FLiveLinkClient::IsVirtualSubject(const FLiveLinkSubjectKey& SubjectKey) const
{
	// Virtual subjects cannot be added (AddVirtualSubject is not implemented), so no subject is one.
	return false;
}

ELiveLinkSubjectState FLiveLinkClient::GetSubjectState(FLiveLinkSubjectName InSubjectName) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(InSubjectName);
	if (Subject == nullptr)
	{
		return ELiveLinkSubjectState::InvalidOrDisabled;
	}
	const FSourceItem* Source = FindSource(Subject->Key.Source);
	if (Source == nullptr || Source->bPendingKill || !Source->Source->IsSourceStillValid())
	{
		return ELiveLinkSubjectState::Disconnected;
	}
	if (!Subject->StaticData.IsValid() || Subject->Frames.Num() == 0)
	{
		return ELiveLinkSubjectState::InvalidOrDisabled;
	}
	return IsSubjectReceiving(*Subject) ? ELiveLinkSubjectState::Connected : ELiveLinkSubjectState::Unresponsive;
}

TArray<FLiveLinkSubjectKey> FLiveLinkClient::GetSubjectsSupportingRole(
	TSubclassOf<ULiveLinkRole> SupportedRole, bool bIncludeDisabledSubject, bool bIncludeVirtualSubject) const
{
	TArray<FLiveLinkSubjectKey> Result;
	FScopeLock Lock(&CollectionLock);
	for (const FSubjectItem& Subject : Subjects)
	{
		if ((bIncludeDisabledSubject || Subject.bEnabled) && Subject.Role.Get() && SupportedRole.Get() &&
			Subject.Role->IsChildOf(SupportedRole.Get()))
		{
			Result.Add(Subject.Key);
		}
	}
	return Result;
}

TArray<FLiveLinkTime> FLiveLinkClient::GetSubjectFrameTimes(const FLiveLinkSubjectKey& SubjectKey) const
{
	TArray<FLiveLinkTime> Result;
	FScopeLock Lock(&CollectionLock);
	if (const FSubjectItem* Subject = FindSubject(SubjectKey))
	{
		for (const FLiveLinkFrameDataStruct& Frame : Subject->Frames)
		{
			Result.Add(Frame.GetBaseData()->GetLiveLinkTime());
		}
	}
	return Result;
}

TArray<FLiveLinkTime> FLiveLinkClient::GetSubjectFrameTimes(FLiveLinkSubjectName SubjectName) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	return Subject ? GetSubjectFrameTimes(Subject->Key) : TArray<FLiveLinkTime>();
}

UObject* FLiveLinkClient::GetSubjectSettings(const FLiveLinkSubjectKey& SubjectKey) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	return Subject ? Subject->Settings.Get() : nullptr;
}

TSubclassOf<ULiveLinkRole> FLiveLinkClient::GetSubjectRole_AnyThread(const FLiveLinkSubjectKey& SubjectKey) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	return Subject ? Subject->Role : TSubclassOf<ULiveLinkRole>();
}

TSubclassOf<ULiveLinkRole> FLiveLinkClient::GetSubjectRole_AnyThread(FLiveLinkSubjectName SubjectName) const
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	return Subject ? Subject->Role : TSubclassOf<ULiveLinkRole>();
}

bool FLiveLinkClient::DoesSubjectSupportsRole_AnyThread(
	const FLiveLinkSubjectKey& SubjectKey, TSubclassOf<ULiveLinkRole> SupportedRole) const
{
	const TSubclassOf<ULiveLinkRole> Role = GetSubjectRole_AnyThread(SubjectKey);
	return Role.Get() && SupportedRole.Get() && Role->IsChildOf(SupportedRole.Get());
}

bool FLiveLinkClient::DoesSubjectSupportsRole_AnyThread(
	FLiveLinkSubjectName SubjectName, TSubclassOf<ULiveLinkRole> SupportedRole) const
{
	const TSubclassOf<ULiveLinkRole> Role = GetSubjectRole_AnyThread(SubjectName);
	return Role.Get() && SupportedRole.Get() && Role->IsChildOf(SupportedRole.Get());
}

const FLiveLinkStaticDataStruct* FLiveLinkClient::GetSubjectStaticData_AnyThread(const FLiveLinkSubjectKey& SubjectKey)
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindSubject(SubjectKey);
	return Subject && Subject->StaticData.IsValid() ? &Subject->StaticData : nullptr;
}

// ------------------------------------------------------------------------------------------------
// Evaluation

bool FLiveLinkClient::EvaluateSubject(const FSubjectItem& Subject, TSubclassOf<ULiveLinkRole> DesiredRole,
	FLiveLinkSubjectFrameData& OutFrame, TOptional<double> WorldTime, TOptional<double> SceneSeconds) const
{
	if (DesiredRole.Get() == nullptr || Subject.Role.Get() == nullptr || !Subject.Role->IsChildOf(DesiredRole.Get()))
	{
		return false;
	}
	if (!Subject.StaticData.IsValid() || Subject.Frames.Num() == 0)
	{
		return false;
	}
	OutFrame.StaticData.InitializeWith(Subject.StaticData);
	if (WorldTime.IsSet())
	{
		PickFrameAtTime(Subject.Frames, WorldTime.GetValue(), &WorldTimeOf, OutFrame.FrameData);
		return true;
	}
	if (SceneSeconds.IsSet())
	{
		PickFrameAtTime(Subject.Frames, SceneSeconds.GetValue(), &SceneSecondsOf, OutFrame.FrameData);
		return true;
	}

	const FSourceItem* Source = FindSource(Subject.Key.Source);
	const ULiveLinkSourceSettings* Settings = Source ? Source->Settings.Get() : nullptr;
	const ELiveLinkSourceMode Mode = Settings ? Settings->Mode : ELiveLinkSourceMode::EngineTime;
	switch (Mode)
	{
		case ELiveLinkSourceMode::Latest:
		{
			const int32 Offset = Settings ? FMath::Max(0, Settings->BufferSettings.LatestOffset) : 0;
			OutFrame.FrameData.InitializeWith(Subject.Frames[FMath::Max(0, Subject.Frames.Num() - 1 - Offset)]);
			return true;
		}
		case ELiveLinkSourceMode::Timecode:
		{
			// The headless engine has no timecode provider to read the engine's timecode from.
			static std::atomic<bool> bReported{false};
			if (!bReported.exchange(true))
			{
				UE_HEADLESS_UNIMPLEMENTED();
			}
			OutFrame.FrameData.InitializeWith(Subject.Frames.Last());
			return true;
		}
		case ELiveLinkSourceMode::EngineTime:
		default:
		{
			const double EngineTimeOffset = Settings ? Settings->BufferSettings.EngineTimeOffset : 0.0;
			const double Time = CachedPlatformTimeAnyThread.load() - EngineTimeOffset;
			PickFrameAtTime(Subject.Frames, Time, &WorldTimeOf, OutFrame.FrameData);
			return true;
		}
	}
}

bool FLiveLinkClient::EvaluateFrame_AnyThread(
	FLiveLinkSubjectName SubjectName, TSubclassOf<ULiveLinkRole> Role, FLiveLinkSubjectFrameData& OutFrame)
{
	bool bEvaluated = false;
	FLiveLinkSubjectKey Key;
	{
		FScopeLock Lock(&CollectionLock);
		if (const FSubjectItem* Subject = FindEnabledSubject(SubjectName))
		{
			Key = Subject->Key;
			bEvaluated = EvaluateSubject(*Subject, Role, OutFrame, TOptional<double>(), TOptional<double>());
		}
	}
#if WITH_EDITOR
	if (bEvaluated)
	{
		const FLiveLinkTime Requested(CachedPlatformTimeAnyThread.load(), FQualifiedFrameTime());
		OnLiveLinkSubjectEvaluatedDelegate.Broadcast(
			Key, Role, Requested, OutFrame.FrameData.GetBaseData()->GetLiveLinkTime());
	}
#endif
	return bEvaluated;
}

bool FLiveLinkClient::EvaluateFrameAtWorldTime_AnyThread(FLiveLinkSubjectName SubjectName, double WorldTime,
	TSubclassOf<ULiveLinkRole> DesiredRole, FLiveLinkSubjectFrameData& OutFrame)
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	return Subject && EvaluateSubject(*Subject, DesiredRole, OutFrame, WorldTime, TOptional<double>());
}

bool FLiveLinkClient::EvaluateFrameAtSceneTime_AnyThread(FLiveLinkSubjectName SubjectName,
	const FQualifiedFrameTime& SceneTime, TSubclassOf<ULiveLinkRole> DesiredRole, FLiveLinkSubjectFrameData& OutFrame)
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	return Subject && EvaluateSubject(*Subject, DesiredRole, OutFrame, TOptional<double>(), SceneTime.AsSeconds());
}

// ------------------------------------------------------------------------------------------------
// Delegates

void FLiveLinkClient::RegisterForFrameDataReceived(const FLiveLinkSubjectKey& InSubjectKey,
	const FOnLiveLinkSubjectStaticDataReceived::FDelegate& OnStaticDataReceived_AnyThread,
	const FOnLiveLinkSubjectFrameDataReceived::FDelegate& OnFrameDataReceived_AnyThread,
	FDelegateHandle& OutStaticDataReceivedHandle, FDelegateHandle& OutFrameDataReceivedHandle)
{
	FScopeLock Lock(&ReceivedDelegatesLock);
	FReceivedDelegates& Delegates = ReceivedDelegates.FindOrAdd(InSubjectKey);
	OutStaticDataReceivedHandle = Delegates.OnStaticDataReceived.Add(OnStaticDataReceived_AnyThread);
	OutFrameDataReceivedHandle = Delegates.OnFrameDataReceived.Add(OnFrameDataReceived_AnyThread);
	bHasReceivedDelegates.store(true);
}

void FLiveLinkClient::UnregisterForFrameDataReceived(const FLiveLinkSubjectKey& InSubjectKey,
	FDelegateHandle InStaticDataReceivedHandle, FDelegateHandle InFrameDataReceivedHandle)
{
	FScopeLock Lock(&ReceivedDelegatesLock);
	if (FReceivedDelegates* Delegates = ReceivedDelegates.Find(InSubjectKey))
	{
		Delegates->OnStaticDataReceived.Remove(InStaticDataReceivedHandle);
		Delegates->OnFrameDataReceived.Remove(InFrameDataReceivedHandle);
		if (!Delegates->OnStaticDataReceived.IsBound() && !Delegates->OnFrameDataReceived.IsBound())
		{
			ReceivedDelegates.Remove(InSubjectKey);
		}
	}
	bHasReceivedDelegates.store(ReceivedDelegates.Num() > 0);
}

bool FLiveLinkClient::RegisterForSubjectFrames(FLiveLinkSubjectName SubjectName,
	const FOnLiveLinkSubjectStaticDataAdded::FDelegate& OnStaticDataAdded,
	const FOnLiveLinkSubjectFrameDataAdded::FDelegate& OnFrameDataAdded, FDelegateHandle& OutStaticDataAddedHandle,
	FDelegateHandle& OutFrameDataAddedHandle, TSubclassOf<ULiveLinkRole>& OutSubjectRole,
	FLiveLinkStaticDataStruct* OutStaticData)
{
	FScopeLock Lock(&CollectionLock);
	const FSubjectItem* Subject = FindEnabledSubject(SubjectName);
	if (Subject == nullptr)
	{
		return false;
	}
	FAddedDelegates& Delegates = AddedDelegates.FindOrAdd(SubjectName);
	OutStaticDataAddedHandle = Delegates.OnStaticDataAdded.Add(OnStaticDataAdded);
	OutFrameDataAddedHandle = Delegates.OnFrameDataAdded.Add(OnFrameDataAdded);
	OutSubjectRole = Subject->Role;
	if (OutStaticData && Subject->StaticData.IsValid())
	{
		OutStaticData->InitializeWith(Subject->StaticData);
	}
	return true;
}

void FLiveLinkClient::UnregisterSubjectFramesHandle(
	FLiveLinkSubjectName InSubjectName, FDelegateHandle InStaticDataAddedHandle, FDelegateHandle InFrameDataAddedHandle)
{
	FScopeLock Lock(&CollectionLock);
	if (FAddedDelegates* Delegates = AddedDelegates.Find(InSubjectName))
	{
		Delegates->OnStaticDataAdded.Remove(InStaticDataAddedHandle);
		Delegates->OnFrameDataAdded.Remove(InFrameDataAddedHandle);
		if (!Delegates->OnStaticDataAdded.IsBound() && !Delegates->OnFrameDataAdded.IsBound())
		{
			AddedDelegates.Remove(InSubjectName);
		}
	}
}

// ------------------------------------------------------------------------------------------------
// Lookups

const FLiveLinkClient::FSourceItem* FLiveLinkClient::FindSource(const FGuid& Guid) const
{
	return Sources.FindByPredicate(
		[&Guid](const FSourceItem& Item)
		{
			return Item.Guid == Guid;
		});
}

FLiveLinkClient::FSourceItem* FLiveLinkClient::FindSource(const FGuid& Guid)
{
	return Sources.FindByPredicate(
		[&Guid](const FSourceItem& Item)
		{
			return Item.Guid == Guid;
		});
}

const FLiveLinkClient::FSubjectItem* FLiveLinkClient::FindSubject(const FLiveLinkSubjectKey& Key) const
{
	return Subjects.FindByPredicate(
		[&Key](const FSubjectItem& Item)
		{
			return Item.Key == Key;
		});
}

FLiveLinkClient::FSubjectItem* FLiveLinkClient::FindSubject(const FLiveLinkSubjectKey& Key)
{
	return Subjects.FindByPredicate(
		[&Key](const FSubjectItem& Item)
		{
			return Item.Key == Key;
		});
}

const FLiveLinkClient::FSubjectItem* FLiveLinkClient::FindEnabledSubject(FLiveLinkSubjectName Name) const
{
	return Subjects.FindByPredicate(
		[&Name](const FSubjectItem& Item)
		{
			return Item.bEnabled && Item.Key.SubjectName == Name;
		});
}

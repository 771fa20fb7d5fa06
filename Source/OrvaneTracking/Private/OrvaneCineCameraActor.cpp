// Copyright Orvane. All Rights Reserved.

#include "OrvaneCineCameraActor.h"

#include "CineCameraComponent.h"
#include "LiveLinkComponentController.h"
#include "LiveLinkPreset.h"
#include "LiveLinkPresetTypes.h"
#include "LiveLinkRole.h"
#include "OrvaneTrackingLog.h"
#include "Roles/LiveLinkCameraRole.h"
#include "UObject/UnrealType.h"

namespace OrvaneCineCameraActor
{
	/** The Blueprint variable that switches the preset on. */
	const FName SetPresetVariableName(TEXT("Set LiveLink Preset"));

	/** The Blueprint variable that holds the preset. */
	const FName PresetVariableName(TEXT("LiveLinkPreset"));
} // namespace OrvaneCineCameraActor

AOrvaneCineCameraActor::AOrvaneCineCameraActor(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
	LiveLinkController = CreateDefaultSubobject<ULiveLinkComponentController>(TEXT("LiveLinkController"));
	// A tracked camera is placed and looked through in the editor viewport, long before anyone presses Play.
	LiveLinkController->bUpdateInEditor = true;
	// The camera role's controllers exist from the start, so the details panel shows them and only the subject
	// remains to be chosen.
	LiveLinkController->SubjectRepresentation.Role = ULiveLinkCameraRole::StaticClass();
}

ULiveLinkPreset* AOrvaneCineCameraActor::GetPresetToApply() const
{
	using namespace OrvaneCineCameraActor;
	// The two are variables of the Blueprint, not members of this class: a class without them binds nothing.
	const UClass* Class = GetClass();
	const FBoolProperty* SetPresetProperty = FindFProperty<FBoolProperty>(Class, SetPresetVariableName);
	const FObjectPropertyBase* PresetProperty = FindFProperty<FObjectPropertyBase>(Class, PresetVariableName);
	if (!SetPresetProperty || !PresetProperty || !SetPresetProperty->GetPropertyValue_InContainer(this))
	{
		return nullptr;
	}
	return Cast<ULiveLinkPreset>(PresetProperty->GetObjectPropertyValue_InContainer(this));
}

FName AOrvaneCineCameraActor::GetTrackingSubjectFor(const ULiveLinkPreset& Preset) const
{
	for (const FLiveLinkSubjectPreset& Subject : Preset.GetSubjectPresets())
	{
		const UClass* Role = Subject.Role.Get();
		if (Role && Role->IsChildOf(ULiveLinkCameraRole::StaticClass()) && !Subject.Key.SubjectName.IsNone())
		{
			return Subject.Key.SubjectName;
		}
	}
	return TrackingSubjectName;
}

void AOrvaneCineCameraActor::OnConstruction(const FTransform& Transform)
{
	Super::OnConstruction(Transform);

	if (const ULiveLinkPreset* Preset = GetPresetToApply())
	{
		AddPresetToClient(*Preset);
		BindControllerToSubject(GetTrackingSubjectFor(*Preset));
	}
}

void AOrvaneCineCameraActor::AddPresetToClient(const ULiveLinkPreset& Preset) const
{
	// Construction runs again whenever the camera is edited or moved. ApplyToClient would remove every source
	// of the client each time (and with them the tracking in use); adding without recreating keeps the sources
	// the client has and creates only the preset's missing ones, so a rerun changes nothing.
	if (!Preset.AddToClient(false))
	{
		// The client has already said why; this names the camera it happened for.
		UE_LOG(LogOrvaneTracking, Log, TEXT("%s: not every source and subject of the preset '%s' could be added."),
			*GetName(), *Preset.GetPathName());
	}
}

void AOrvaneCineCameraActor::BindControllerToSubject(FName SubjectName)
{
	FLiveLinkSubjectRepresentation Representation;
	Representation.Subject = SubjectName;
	Representation.Role = ULiveLinkCameraRole::StaticClass();
	// Setting the subject rebuilds the controllers; a rerun that binds the same subject keeps them as they are.
	if (LiveLinkController->GetSubjectRepresentation() != Representation)
	{
		LiveLinkController->SetSubjectRepresentation(Representation);
	}
	// The pose goes to the actor's root (the controller's default), so the whole camera follows the tracker
	// and a parent actor can place the tracking space in the level; the lens goes to this cine camera.
	LiveLinkController->SetControlledComponent(ULiveLinkCameraRole::StaticClass(), GetCineCameraComponent());
}

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CineCameraActor.h"
#include "CoreMinimal.h"
#include "LiveLinkComponentController.h"
#include "UObject/ObjectMacros.h"

#include "OrvaneCineCameraActor.generated.h"

class ULiveLinkPreset;

/**
 * A cine camera driven by a Live Link camera subject: its Live Link controller puts the subject's pose on the
 * actor and its lens on the cine camera component, in the editor viewport as well as in a running game.
 *
 * A Blueprint of this class binds itself to tracking with two Blueprint variables: when "Set LiveLink Preset"
 * is true and "LiveLinkPreset" holds a Live Link preset, construction adds the preset's sources to the Live
 * Link client and points the controller at the tracking subject. Without those variables (this native class
 * on its own) construction leaves the client and the controller alone.
 */
UCLASS(Blueprintable, ClassGroup = Common, meta = (DisplayName = "Orvane Cine Camera Actor"))
class ORVANETRACKING_API AOrvaneCineCameraActor : public ACineCameraActor
{
	GENERATED_BODY()

public:
	AOrvaneCineCameraActor(const FObjectInitializer& ObjectInitializer = FObjectInitializer::Get());

	/**
	 * The subject the camera follows when the preset names no subject of the camera role, so that it is bound
	 * before any tracking data arrives. The tracking source names its subjects "FreeD <camera id>" and
	 * "OpenTrackIO <source number>".
	 */
	UPROPERTY(EditAnywhere, BlueprintReadWrite, Category = "Tracking")
	FName TrackingSubjectName = FName(TEXT("FreeD 1"));

	/** The Live Link controller that drives the camera; never null for an actor made from the class. */
	ULiveLinkComponentController* GetLiveLinkController() const { return LiveLinkController; }

	/**
	 * The preset construction applies: the value of the Blueprint variable "LiveLinkPreset" when the Blueprint
	 * variable "Set LiveLink Preset" is true; null when either is false, empty or missing.
	 */
	ULiveLinkPreset* GetPresetToApply() const;

	/**
	 * The subject a preset binds the camera to: the preset's first subject of the camera role, else
	 * TrackingSubjectName.
	 */
	FName GetTrackingSubjectFor(const ULiveLinkPreset& Preset) const;

	//~ Begin AActor interface
	virtual void OnConstruction(const FTransform& Transform) override;
	//~ End AActor interface

private:
	/** Adds the preset's missing sources and subjects to the Live Link client, keeping every source it has. */
	void AddPresetToClient(const ULiveLinkPreset& Preset) const;

	/** Points the controller at the subject in the camera role and the lens at the cine camera component. */
	void BindControllerToSubject(FName SubjectName);

	/** Applies tracking to the actor (pose) and to the cine camera component (lens). */
	UPROPERTY(Category = "Tracking", VisibleAnywhere, BlueprintReadOnly, meta = (AllowPrivateAccess = "true"))
	TObjectPtr<ULiveLinkComponentController> LiveLinkController;
};

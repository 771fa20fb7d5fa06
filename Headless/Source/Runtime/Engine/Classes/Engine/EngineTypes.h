// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include "EngineTypes.generated.h"

struct FHitResult;

/** How a component's location, rotation or scale is treated when it is attached. */
enum class EAttachmentRule : uint8
{
	/** Keeps the current relative transform as the relative transform to the new parent. */
	KeepRelative,
	/** Recomputes the relative transform so the world transform stays where it is. */
	KeepWorld,
	/** Snaps to the parent (or socket): the relative value becomes the identity. */
	SnapToTarget,
};

/** How a component's location, rotation or scale is treated when it is detached. */
enum class EDetachmentRule : uint8
{
	/** The relative transform becomes the world transform. */
	KeepRelative,
	/** The world transform is kept. */
	KeepWorld,
};

/** The rules an attachment applies to location, rotation and scale. */
struct FAttachmentTransformRules
{
	/** Various preset attachment rules. */
	static ENGINE_API FAttachmentTransformRules KeepRelativeTransform;
	static ENGINE_API FAttachmentTransformRules KeepWorldTransform;
	static ENGINE_API FAttachmentTransformRules SnapToTargetNotIncludingScale;
	static ENGINE_API FAttachmentTransformRules SnapToTargetIncludingScale;

	FAttachmentTransformRules(EAttachmentRule InRule, bool bInWeldSimulatedBodies)
		: LocationRule(InRule)
		, RotationRule(InRule)
		, ScaleRule(InRule)
		, bWeldSimulatedBodies(bInWeldSimulatedBodies)
	{
	}

	FAttachmentTransformRules(EAttachmentRule InLocationRule, EAttachmentRule InRotationRule,
		EAttachmentRule InScaleRule, bool bInWeldSimulatedBodies)
		: LocationRule(InLocationRule)
		, RotationRule(InRotationRule)
		, ScaleRule(InScaleRule)
		, bWeldSimulatedBodies(bInWeldSimulatedBodies)
	{
	}

	EAttachmentRule LocationRule;
	EAttachmentRule RotationRule;
	EAttachmentRule ScaleRule;

	/** Whether to weld simulated bodies together (there is no physics in the headless editor). */
	bool bWeldSimulatedBodies;
};

/** The rules a detachment applies to location, rotation and scale. */
struct FDetachmentTransformRules
{
	/** Various preset detachment rules. */
	static ENGINE_API FDetachmentTransformRules KeepRelativeTransform;
	static ENGINE_API FDetachmentTransformRules KeepWorldTransform;

	FDetachmentTransformRules(EDetachmentRule InRule, bool bInCallModify)
		: LocationRule(InRule)
		, RotationRule(InRule)
		, ScaleRule(InRule)
		, bCallModify(bInCallModify)
	{
	}

	FDetachmentTransformRules(
		EDetachmentRule InLocationRule, EDetachmentRule InRotationRule, EDetachmentRule InScaleRule, bool bInCallModify)
		: LocationRule(InLocationRule)
		, RotationRule(InRotationRule)
		, ScaleRule(InScaleRule)
		, bCallModify(bInCallModify)
	{
	}

	/** The detachment rules that undo an attachment made with AttachmentRules. */
	explicit FDetachmentTransformRules(const FAttachmentTransformRules& AttachmentRules, bool bInCallModify)
		: LocationRule(AttachmentRules.LocationRule == EAttachmentRule::KeepRelative ? EDetachmentRule::KeepRelative
																					 : EDetachmentRule::KeepWorld)
		, RotationRule(AttachmentRules.RotationRule == EAttachmentRule::KeepRelative ? EDetachmentRule::KeepRelative
																					 : EDetachmentRule::KeepWorld)
		, ScaleRule(AttachmentRules.ScaleRule == EAttachmentRule::KeepRelative ? EDetachmentRule::KeepRelative
																			   : EDetachmentRule::KeepWorld)
		, bCallModify(bInCallModify)
	{
	}

	EDetachmentRule LocationRule;
	EDetachmentRule RotationRule;
	EDetachmentRule ScaleRule;

	/** Whether to call Modify() on the components concerned when detaching. */
	bool bCallModify;
};

/** Whether a scene component may move once it is in the level. */
UENUM()
namespace EComponentMobility
{
	enum Type : int
	{
		/** Never moves after it was placed. */
		Static,
		/** May change (lights) but not move. */
		Stationary,
		/** May move and change at any time. */
		Movable
	};
}

/** The kinds of world the engine knows. */
namespace EWorldType
{
	enum Type
	{
		/** An untyped world. */
		None,
		/** The game world of a running game. */
		Game,
		/** A world being edited in the editor. */
		Editor,
		/** A play-in-editor world. */
		PIE,
		/** A preview world of an editor tool. */
		EditorPreview,
		/** A preview world of a game. */
		GamePreview,
		/** A minimal remote-procedure-call world. */
		GameRPC,
		/** A loaded world that is not part of any context. */
		Inactive
	};
} // namespace EWorldType

/** What SpawnActor does when the new actor would overlap something. */
UENUM()
enum class ESpawnActorCollisionHandlingMethod : uint8
{
	/** Use the actor's own setting. */
	Undefined,
	/** Spawn where asked, whatever is there. */
	AlwaysSpawn,
	/** Try to move the actor out of the way; spawn anyway. */
	AdjustIfPossibleButAlwaysSpawn,
	/** Try to move the actor out of the way; do not spawn if that fails. */
	AdjustIfPossibleButDontSpawnIfColliding,
	/** Do not spawn if anything is in the way. */
	DontSpawnIfColliding,
};

/** How the spawn transform combines with the transform of the template's root component. */
UENUM()
enum class ESpawnActorScaleMethod : uint8
{
	/** Use the spawn transform as it is. */
	OverrideRootScale,
	/** Multiply the root component's scale by the spawn transform's scale. */
	MultiplyWithRoot,
	SelectDefaultAtRuntime UMETA(Hidden),
};

/** Whether a move is a teleport (physics state is reset rather than swept). */
enum class ETeleportType : uint8
{
	/** A normal move. */
	None,
	/** A teleport: velocity is kept, physics is not swept. */
	TeleportPhysics,
	/** A teleport that also resets physics state. */
	ResetPhysics,
};

// Copyright Orvane. All Rights Reserved.

#include "LiveLinkControllerBase.h"

#include "Components/ActorComponent.h"
#include "GameFramework/Actor.h"
#include "UObject/UObjectHash.h"

void ULiveLinkControllerBase::SetAttachedComponent(UActorComponent* ActorComponent)
{
	AttachedComponent = ActorComponent;
}

UActorComponent* ULiveLinkControllerBase::GetAttachedComponent() const
{
	return AttachedComponent.Get();
}

void ULiveLinkControllerBase::SetSelectedSubject(FLiveLinkSubjectRepresentation LiveLinkSubject)
{
	SelectedSubject = LiveLinkSubject;
}

AActor* ULiveLinkControllerBase::GetOuterActor() const
{
	return GetTypedOuter<AActor>();
}

TArray<TSubclassOf<ULiveLinkControllerBase>> ULiveLinkControllerBase::GetControllersForRole(
	const TSubclassOf<ULiveLinkRole>& RoleToSupport)
{
	TArray<TSubclassOf<ULiveLinkControllerBase>> Result;
	if (!RoleToSupport)
	{
		return Result;
	}

	// Every class registered with the object system so far: the native classes of the loaded modules and
	// any Blueprint classes. The list is taken in registration order, so the engine's own controllers (whose
	// modules load first) come before the ones derived from them.
	TArray<UClass*> DerivedClasses;
	GetDerivedClasses(ULiveLinkControllerBase::StaticClass(), DerivedClasses, true);
	for (UClass* Class : DerivedClasses)
	{
		if (Class->HasAnyClassFlags(CLASS_Abstract | CLASS_Deprecated | CLASS_NewerVersionExists))
		{
			continue;
		}
		ULiveLinkControllerBase* DefaultController = Class->GetDefaultObject<ULiveLinkControllerBase>();
		if (DefaultController && DefaultController->IsRoleSupported(RoleToSupport))
		{
			Result.Add(Class);
		}
	}
	return Result;
}

TSubclassOf<ULiveLinkControllerBase> ULiveLinkControllerBase::GetControllerForRole(
	const TSubclassOf<ULiveLinkRole>& RoleToSupport)
{
	const TArray<TSubclassOf<ULiveLinkControllerBase>> Controllers = GetControllersForRole(RoleToSupport);
	return Controllers.Num() > 0 ? Controllers[0] : TSubclassOf<ULiveLinkControllerBase>();
}

// Copyright Orvane. All Rights Reserved.

#include "LiveLinkComponentController.h"

#include "Components/SceneComponent.h"
#include "Engine/World.h"
#include "Features/IModularFeatures.h"
#include "GameFramework/Actor.h"
#include "ILiveLinkClient.h"
#include "LiveLinkControllerBase.h"
#include "LiveLinkTypes.h"

DEFINE_LOG_CATEGORY_STATIC(LogLiveLinkComponentController, Log, All);

ULiveLinkComponentController::ULiveLinkComponentController()
	: bUpdateInEditor(true)
	, bIsDirty(false)
{
	// The controller has to run in the editor's own world too: that is where a tracked camera is placed and
	// looked through before anyone presses Play.
	PrimaryComponentTick.bCanEverTick = true;
	PrimaryComponentTick.bStartWithTickEnabled = true;
	PrimaryComponentTick.TickGroup = TG_PrePhysics;
	bTickInEditor = true;
	bAutoActivate = true;
}

void ULiveLinkComponentController::SetSubjectRepresentation(FLiveLinkSubjectRepresentation InSubjectRepresentation)
{
	SubjectRepresentation = InSubjectRepresentation;
	OnSubjectRoleChanged();
}

void ULiveLinkComponentController::OnSubjectRoleChanged()
{
	// Controllers of roles that stay in the hierarchy are kept (with their settings); the others go.
	TMap<TSubclassOf<ULiveLinkRole>, TObjectPtr<ULiveLinkControllerBase>> NewControllerMap;
	for (const TSubclassOf<ULiveLinkRole>& Role : GetRoleHierarchy(SubjectRepresentation.Role))
	{
		ULiveLinkControllerBase* Controller = nullptr;
		if (const TObjectPtr<ULiveLinkControllerBase>* Existing = ControllerMap.Find(Role))
		{
			ULiveLinkControllerBase* ExistingController = *Existing;
			if (ExistingController &&
				ExistingController->GetClass()->GetDefaultObject<ULiveLinkControllerBase>()->IsRoleSupported(Role))
			{
				Controller = ExistingController;
				ControllerMap.Remove(Role);
			}
		}
		if (Controller == nullptr)
		{
			const TSubclassOf<ULiveLinkControllerBase> ControllerClass =
				ULiveLinkControllerBase::GetControllerForRole(Role);
			if (!ControllerClass)
			{
				continue;
			}
			Controller = CreateController(Role, ControllerClass);
		}
		Controller->SetSelectedSubject(SubjectRepresentation);
		NewControllerMap.Add(Role, Controller);
	}

	CleanupControllers();
	ControllerMap = MoveTemp(NewControllerMap);
	bIsDirty = true;
	OnControllerMapUpdatedDelegate.Broadcast();
}

bool ULiveLinkComponentController::IsControllerMapOutdated() const
{
	int32 ExpectedControllers = 0;
	for (const TSubclassOf<ULiveLinkRole>& Role : GetRoleHierarchy(SubjectRepresentation.Role))
	{
		if (!ULiveLinkControllerBase::GetControllerForRole(Role))
		{
			continue;
		}
		const TObjectPtr<ULiveLinkControllerBase>* Controller = ControllerMap.Find(Role);
		if (Controller == nullptr || *Controller == nullptr)
		{
			return true;
		}
		++ExpectedControllers;
	}
	return ControllerMap.Num() != ExpectedControllers;
}

void ULiveLinkComponentController::SetControllerClassForRole(
	TSubclassOf<ULiveLinkRole> RoleClass, TSubclassOf<ULiveLinkControllerBase> DesiredControllerClass)
{
	TObjectPtr<ULiveLinkControllerBase>* Slot = ControllerMap.Find(RoleClass);
	if (Slot == nullptr)
	{
		UE_LOG(LogLiveLinkComponentController, Warning,
			TEXT("'%s' has no controller for role '%s': the role is not part of the subject's role '%s'."),
			*GetPathName(), RoleClass ? *RoleClass->GetName() : TEXT("None"),
			SubjectRepresentation.Role ? *SubjectRepresentation.Role->GetName() : TEXT("None"));
		return;
	}
	if (*Slot != nullptr && (*Slot)->GetClass() == DesiredControllerClass.Get())
	{
		return;
	}
	if (DesiredControllerClass && (DesiredControllerClass->HasAnyClassFlags(CLASS_Abstract) ||
									  !DesiredControllerClass.GetDefaultObject()->IsRoleSupported(RoleClass)))
	{
		UE_LOG(LogLiveLinkComponentController, Warning,
			TEXT("'%s' keeps its controller for role '%s': controller class '%s' cannot drive that role."),
			*GetPathName(), *RoleClass->GetName(), *DesiredControllerClass->GetName());
		return;
	}

	if (*Slot != nullptr)
	{
		(*Slot)->Cleanup();
	}
	*Slot = DesiredControllerClass ? CreateController(RoleClass, DesiredControllerClass) : nullptr;
	bIsDirty = true;
	OnControllerMapUpdatedDelegate.Broadcast();
}

TSubclassOf<ULiveLinkControllerBase> ULiveLinkComponentController::GetControllerClassForRoleClass(
	const TSubclassOf<ULiveLinkRole> RoleClass) const
{
	const TObjectPtr<ULiveLinkControllerBase>* Controller = ControllerMap.Find(RoleClass);
	return Controller && *Controller ? (*Controller)->GetClass() : nullptr;
}

void ULiveLinkComponentController::SetControlledComponent(
	TSubclassOf<ULiveLinkRole> InRoleClass, UActorComponent* InComponent)
{
	if (const TObjectPtr<ULiveLinkControllerBase>* Controller = ControllerMap.Find(InRoleClass))
	{
		if (*Controller != nullptr)
		{
			(*Controller)->SetAttachedComponent(InComponent);
		}
	}
}

UActorComponent* ULiveLinkComponentController::GetControlledComponent(TSubclassOf<ULiveLinkRole> InRoleClass) const
{
	const TObjectPtr<ULiveLinkControllerBase>* Controller = ControllerMap.Find(InRoleClass);
	return Controller && *Controller ? (*Controller)->GetAttachedComponent() : nullptr;
}

void ULiveLinkComponentController::OnRegister()
{
	Super::OnRegister();

	// A subject set through the property (not the setter) before registration still gets its controllers.
	if (IsControllerMapOutdated())
	{
		OnSubjectRoleChanged();
	}
	bIsDirty = true;
}

void ULiveLinkComponentController::TickComponent(
	float DeltaTime, ELevelTick TickType, FActorComponentTickFunction* ThisTickFunction)
{
	Super::TickComponent(DeltaTime, TickType, ThisTickFunction);

	// The headless editor has no Sequencer, so the owner is never a spawnable and
	// bDisableEvaluateLiveLinkWhenSpawnable never applies.
	if (!bEvaluateLiveLink || !ShouldEvaluateInCurrentWorld())
	{
		return;
	}

	if (bIsDirty)
	{
		for (const TPair<TSubclassOf<ULiveLinkRole>, TObjectPtr<ULiveLinkControllerBase>>& Pair : ControllerMap)
		{
			if (ULiveLinkControllerBase* Controller = Pair.Value)
			{
				if (Controller->GetAttachedComponent() == nullptr)
				{
					Controller->SetAttachedComponent(FindDefaultComponentToControl(Controller));
				}
				Controller->OnEvaluateRegistered();
			}
		}
		bIsDirty = false;
	}

	IModularFeatures& ModularFeatures = IModularFeatures::Get();
	if (ControllerMap.Num() == 0 || !ModularFeatures.IsModularFeatureAvailable(ILiveLinkClient::ModularFeatureName))
	{
		return;
	}
	ILiveLinkClient& Client = ModularFeatures.GetModularFeature<ILiveLinkClient>(ILiveLinkClient::ModularFeatureName);

	FLiveLinkSubjectFrameData SubjectData;
	if (!Client.EvaluateFrame_AnyThread(SubjectRepresentation.Subject, SubjectRepresentation.Role, SubjectData))
	{
		return;
	}

	for (const TPair<TSubclassOf<ULiveLinkRole>, TObjectPtr<ULiveLinkControllerBase>>& Pair : ControllerMap)
	{
		if (ULiveLinkControllerBase* Controller = Pair.Value)
		{
			Controller->Tick(DeltaTime, SubjectData);
		}
	}
	OnLiveLinkUpdated.Broadcast(DeltaTime);
}

void ULiveLinkComponentController::DestroyComponent(bool bPromoteChildren)
{
	CleanupControllers();
	Super::DestroyComponent(bPromoteChildren);
}

TArray<TSubclassOf<ULiveLinkRole>> ULiveLinkComponentController::GetRoleHierarchy(TSubclassOf<ULiveLinkRole> Role)
{
	TArray<TSubclassOf<ULiveLinkRole>> Roles;
	for (UClass* Class = Role.Get(); Class != nullptr && Class != ULiveLinkRole::StaticClass();
		 Class = Class->GetSuperClass())
	{
		Roles.Add(Class);
	}
	return Roles;
}

ULiveLinkControllerBase* ULiveLinkComponentController::CreateController(
	TSubclassOf<ULiveLinkRole> Role, TSubclassOf<ULiveLinkControllerBase> ControllerClass)
{
	ULiveLinkControllerBase* Controller = NewObject<ULiveLinkControllerBase>(this, ControllerClass.Get());
	Controller->SetSelectedSubject(SubjectRepresentation);
	Controller->SetAttachedComponent(FindDefaultComponentToControl(Controller));
	return Controller;
}

UActorComponent* ULiveLinkComponentController::FindDefaultComponentToControl(
	const ULiveLinkControllerBase* Controller) const
{
	AActor* Owner = GetOwner();
	const TSubclassOf<UActorComponent> DesiredClass = Controller ? Controller->GetDesiredComponentClass() : nullptr;
	if (Owner == nullptr || !DesiredClass)
	{
		return nullptr;
	}
	USceneComponent* RootComponent = Owner->GetRootComponent();
	if (RootComponent != nullptr && RootComponent->IsA(DesiredClass))
	{
		return RootComponent;
	}
	return Owner->FindComponentByClass(DesiredClass);
}

bool ULiveLinkComponentController::ShouldEvaluateInCurrentWorld() const
{
	const UWorld* World = GetWorld();
	if (World == nullptr)
	{
		return false;
	}
	switch (World->WorldType)
	{
		case EWorldType::Editor:
			return bUpdateInEditor;
		case EWorldType::EditorPreview:
			return bUpdateInEditor && bUpdateInPreviewEditor;
		default:
			return true;
	}
}

void ULiveLinkComponentController::CleanupControllers()
{
	for (const TPair<TSubclassOf<ULiveLinkRole>, TObjectPtr<ULiveLinkControllerBase>>& Pair : ControllerMap)
	{
		if (ULiveLinkControllerBase* Controller = Pair.Value)
		{
			Controller->Cleanup();
		}
	}
	ControllerMap.Reset();
}

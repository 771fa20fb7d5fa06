// Copyright Orvane. All Rights Reserved.

#include "Materials/MaterialInstance.h"

#include "Materials/Material.h"

DEFINE_LOG_CATEGORY_STATIC(LogMaterialInstance, Log, All);

namespace UE::Engine::MaterialInstance::Private
{
	/**
	 * Follows the parents of an instance up to the first object that is not an instance. Stops at an instance
	 * seen before, so a circular chain (possible in a hand-edited or old file, or by assigning Parent directly)
	 * ends the walk instead of looping; bOutCircular tells the two endings apart.
	 */
	const UMaterialInterface* FindChainEnd(const UMaterialInstance* Instance, bool& bOutCircular)
	{
		TSet<const UMaterialInstance*> Visited;
		const UMaterialInterface* Current = Instance;
		bOutCircular = false;
		while (const UMaterialInstance* CurrentInstance = Cast<UMaterialInstance>(Current))
		{
			bool bAlreadyVisited = false;
			Visited.Add(CurrentInstance, &bAlreadyVisited);
			if (bAlreadyVisited)
			{
				bOutCircular = true;
				return nullptr;
			}
			Current = CurrentInstance->Parent.Get();
		}
		return Current;
	}

	/** The base material of an instance; null, with an error for a circular chain, if there is none. */
	const UMaterial* FindBaseMaterial(const UMaterialInstance* Instance)
	{
		bool bCircular = false;
		const UMaterialInterface* End = FindChainEnd(Instance, bCircular);
		if (bCircular)
		{
			UE_LOG(LogMaterialInstance, Error,
				TEXT("%s: the chain of parents is circular, so it has no base material."), *Instance->GetPathName());
			return nullptr;
		}
		return End ? End->GetMaterial() : nullptr;
	}
} // namespace UE::Engine::MaterialInstance::Private

UMaterialInstance::UMaterialInstance(const FObjectInitializer& ObjectInitializer)
	: Super(ObjectInitializer)
{
}

UMaterial* UMaterialInstance::GetMaterial()
{
	return const_cast<UMaterial*>(UE::Engine::MaterialInstance::Private::FindBaseMaterial(this));
}

const UMaterial* UMaterialInstance::GetMaterial() const
{
	return UE::Engine::MaterialInstance::Private::FindBaseMaterial(this);
}

bool UMaterialInstance::IsDependent(UMaterialInterface* TestDependency)
{
	if (!TestDependency)
	{
		return false;
	}
	TSet<const UMaterialInterface*> Visited;
	for (UMaterialInterface* Current = this; Current;)
	{
		bool bAlreadyVisited = false;
		Visited.Add(Current, &bAlreadyVisited);
		if (bAlreadyVisited)
		{
			return false;
		}
		if (Current == TestDependency)
		{
			return true;
		}
		UMaterialInstance* CurrentInstance = Cast<UMaterialInstance>(Current);
		if (!CurrentInstance)
		{
			// The chain ends in a material, which depends on nothing else.
			return false;
		}
		Current = CurrentInstance->Parent.Get();
	}
	return false;
}

bool UMaterialInstance::SetParentInternal(UMaterialInterface* NewParent, bool RecacheShaders)
{
	if (NewParent && NewParent->IsDependent(this))
	{
		UE_LOG(LogMaterialInstance, Error,
			TEXT("%s cannot take %s as its parent: %s already depends on it, so the chain of parents would be "
				 "circular."),
			*GetPathName(), *NewParent->GetPathName(), *NewParent->GetPathName());
		return false;
	}
	if (Parent.Get() == NewParent)
	{
		return false;
	}
	Parent = NewParent;
	return true;
}

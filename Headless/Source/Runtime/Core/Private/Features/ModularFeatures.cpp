// Copyright Orvane. All Rights Reserved.

#include "Features/IModularFeatures.h"

#include "Containers/Map.h"
#include "HAL/CriticalSection.h"
#include "Misc/ScopeLock.h"

namespace
{
	/** The registry: implementations by type name, in registration order, behind one recursive lock. */
	class FModularFeatures final : public IModularFeatures
	{
	public:
		virtual void LockModularFeatureList() override { FeaturesLock.Lock(); }
		virtual void UnlockModularFeatureList() override { FeaturesLock.Unlock(); }

		virtual int32 GetModularFeatureImplementationCount(const FName Type) override
		{
			FScopeLock Lock(&FeaturesLock);
			const TArray<IModularFeature*>* Implementations = Features.Find(Type);
			return Implementations ? Implementations->Num() : 0;
		}

		virtual IModularFeature* GetModularFeatureImplementation(const FName Type, const int32 Index) override
		{
			FScopeLock Lock(&FeaturesLock);
			const TArray<IModularFeature*>* Implementations = Features.Find(Type);
			return Implementations && Implementations->IsValidIndex(Index) ? (*Implementations)[Index] : nullptr;
		}

		virtual void RegisterModularFeature(const FName Type, IModularFeature* ModularFeature) override
		{
			check(ModularFeature != nullptr);
			{
				FScopeLock Lock(&FeaturesLock);
				Features.FindOrAdd(Type).Add(ModularFeature);
			}
			// Listeners run outside the lock: one that waits for another thread using the registry must not
			// deadlock.
			RegisteredEvent.Broadcast(Type, ModularFeature);
		}

		virtual void UnregisterModularFeature(const FName Type, IModularFeature* ModularFeature) override
		{
			bool bRemoved = false;
			{
				FScopeLock Lock(&FeaturesLock);
				if (TArray<IModularFeature*>* Implementations = Features.Find(Type))
				{
					const int32 Index = Implementations->Find(ModularFeature);
					if (Index != INDEX_NONE)
					{
						Implementations->RemoveAt(Index);
						bRemoved = true;
					}
					if (Implementations->Num() == 0)
					{
						Features.Remove(Type);
					}
				}
			}
			if (bRemoved)
			{
				UnregisteredEvent.Broadcast(Type, ModularFeature);
			}
		}

		virtual FOnModularFeatureRegistered& OnModularFeatureRegistered() override { return RegisteredEvent; }
		virtual FOnModularFeatureUnregistered& OnModularFeatureUnregistered() override { return UnregisteredEvent; }

	private:
		FCriticalSection FeaturesLock;
		TMap<FName, TArray<IModularFeature*>> Features;
		FOnModularFeatureRegistered RegisteredEvent;
		FOnModularFeatureUnregistered UnregisteredEvent;
	};
} // namespace

IModularFeatures& IModularFeatures::Get()
{
	static FModularFeatures Registry;
	return Registry;
}

// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/Array.h"
#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Delegates/Delegate.h"
#include "Features/IModularFeature.h"
#include "Misc/AssertionMacros.h"
#include "UObject/NameTypes.h"

/**
 * The process-wide registry of modular features: modules register implementations of an interface under a
 * type name, and others find them without depending on the module that provides them. Every call may be made
 * from any thread.
 */
class IModularFeatures
{
public:
	/** The registry. */
	static CORE_API IModularFeatures& Get();

	virtual ~IModularFeatures() = default;

	/** Holds the registry's lock, so a series of queries sees no registration in between. */
	virtual void LockModularFeatureList() = 0;
	virtual void UnlockModularFeatureList() = 0;

	/** Holds the registry's lock for its scope. */
	class FScopedLockModularFeatureList
	{
	public:
		FScopedLockModularFeatureList() { IModularFeatures::Get().LockModularFeatureList(); }
		~FScopedLockModularFeatureList() { IModularFeatures::Get().UnlockModularFeatureList(); }
		FScopedLockModularFeatureList(const FScopedLockModularFeatureList&) = delete;
		FScopedLockModularFeatureList& operator=(const FScopedLockModularFeatureList&) = delete;
	};

	/** The number of implementations registered under Type. */
	virtual int32 GetModularFeatureImplementationCount(const FName Type) = 0;

	/** The implementation at Index (registration order) under Type; null if there is none. */
	virtual IModularFeature* GetModularFeatureImplementation(const FName Type, const int32 Index) = 0;

	/** Adds an implementation under Type; registering the same one twice registers it twice. */
	virtual void RegisterModularFeature(const FName Type, IModularFeature* ModularFeature) = 0;

	/** Removes one registration of an implementation under Type. */
	virtual void UnregisterModularFeature(const FName Type, IModularFeature* ModularFeature) = 0;

	/** True if at least one implementation is registered under Type. */
	inline bool IsModularFeatureAvailable(const FName Type) { return GetModularFeatureImplementationCount(Type) > 0; }

	/** The first implementation registered under Type; it must exist (check IsModularFeatureAvailable first). */
	template <typename TModularFeature>
	inline TModularFeature& GetModularFeature(const FName Type)
	{
		IModularFeature* Feature = GetModularFeatureImplementation(Type, 0);
		checkf(Feature != nullptr, TEXT("No modular feature is registered as '%s'."), *Type.ToString());
		return *static_cast<TModularFeature*>(Feature);
	}

	/** Every implementation registered under Type, in registration order. */
	template <typename TModularFeature>
	inline TArray<TModularFeature*> GetModularFeatureImplementations(const FName Type)
	{
		TArray<TModularFeature*> Implementations;
		FScopedLockModularFeatureList ScopedLock;
		const int32 Count = GetModularFeatureImplementationCount(Type);
		for (int32 Index = 0; Index < Count; ++Index)
		{
			Implementations.Add(static_cast<TModularFeature*>(GetModularFeatureImplementation(Type, Index)));
		}
		return Implementations;
	}

	/** Broadcast after an implementation was registered, on the registering thread. */
	DECLARE_EVENT_TwoParams(IModularFeatures, FOnModularFeatureRegistered, const FName&, IModularFeature*);
	virtual FOnModularFeatureRegistered& OnModularFeatureRegistered() = 0;

	/** Broadcast after an implementation was unregistered, on the unregistering thread. */
	DECLARE_EVENT_TwoParams(IModularFeatures, FOnModularFeatureUnregistered, const FName&, IModularFeature*);
	virtual FOnModularFeatureUnregistered& OnModularFeatureUnregistered() = 0;
};

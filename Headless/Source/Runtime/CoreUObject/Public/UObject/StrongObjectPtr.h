// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreMinimal.h"
#include "Templates/UniquePtr.h"
#include "UObject/GCObject.h"

namespace UE::CoreUObject::Private
{
	/** Holds one object reference for the garbage collector. */
	class COREUOBJECT_API FStrongObjectReferencer final : public FGCObject
	{
	public:
		explicit FStrongObjectReferencer(UObject* InObject)
			: Object(InObject)
		{
		}

		virtual void AddReferencedObjects(FReferenceCollector& Collector) override;
		virtual FString GetReferencerName() const override;

		UObject* Object;
	};
} // namespace UE::CoreUObject::Private

/** An owning reference that keeps the object alive through garbage collection while it exists. */
template <typename ObjectType>
class TStrongObjectPtr
{
public:
	TStrongObjectPtr() = default;

	FORCEINLINE TStrongObjectPtr(TYPE_OF_NULLPTR) {}

	FORCEINLINE explicit TStrongObjectPtr(ObjectType* InObject) { Reset(InObject); }

	FORCEINLINE TStrongObjectPtr(const TStrongObjectPtr& Other) { Reset(Other.Get()); }

	template <typename OtherObjectType>
	FORCEINLINE TStrongObjectPtr(const TStrongObjectPtr<OtherObjectType>& Other)
	{
		Reset(Other.Get());
	}

	FORCEINLINE TStrongObjectPtr(TStrongObjectPtr&& Other)
		: Referencer(MoveTemp(Other.Referencer))
	{
	}

	FORCEINLINE TStrongObjectPtr& operator=(const TStrongObjectPtr& Other)
	{
		Reset(Other.Get());
		return *this;
	}

	FORCEINLINE TStrongObjectPtr& operator=(TStrongObjectPtr&& Other)
	{
		Referencer = MoveTemp(Other.Referencer);
		return *this;
	}

	FORCEINLINE ObjectType& operator*() const { return *Get(); }
	FORCEINLINE ObjectType* operator->() const { return Get(); }

	FORCEINLINE bool IsValid() const { return Get() != nullptr; }
	FORCEINLINE explicit operator bool() const { return IsValid(); }

	FORCEINLINE ObjectType* Get() const { return Referencer ? (ObjectType*)Referencer->Object : nullptr; }

	FORCEINLINE void Reset(ObjectType* InNewObject = nullptr)
	{
		if (InNewObject)
		{
			if (Referencer)
			{
				Referencer->Object = (UObject*)InNewObject;
			}
			else
			{
				Referencer = MakeUnique<UE::CoreUObject::Private::FStrongObjectReferencer>((UObject*)InNewObject);
			}
		}
		else
		{
			Referencer.Reset();
		}
	}

	template <typename OtherObjectType>
	FORCEINLINE bool operator==(const TStrongObjectPtr<OtherObjectType>& Other) const
	{
		return (const void*)Get() == (const void*)Other.Get();
	}

	friend FORCEINLINE uint32 GetTypeHash(const TStrongObjectPtr& StrongObjectPtr)
	{
		return GetTypeHash((const void*)StrongObjectPtr.Get());
	}

private:
	TUniquePtr<UE::CoreUObject::Private::FStrongObjectReferencer> Referencer;
};

template <typename ObjectType>
TStrongObjectPtr<ObjectType> MakeStrongObjectPtr(ObjectType* Object)
{
	return TStrongObjectPtr<ObjectType>(Object);
}

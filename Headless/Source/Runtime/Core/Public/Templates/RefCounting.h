// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/TypeHash.h"

#include <atomic>
#include <utility>

/** Base of intrusively reference-counted objects; deletes itself when the last reference is released. */
class FRefCountBase
{
public:
	FRefCountBase() = default;
	FRefCountBase(const FRefCountBase&) = delete;
	FRefCountBase& operator=(const FRefCountBase&) = delete;
	virtual ~FRefCountBase() { check(NumRefs.load(std::memory_order_relaxed) == 0); }

	/** Adds a reference; returns the new count. */
	uint32 AddRef() const { return NumRefs.fetch_add(1, std::memory_order_relaxed) + 1; }

	/** Releases a reference, deleting the object when none remain; returns the new count. */
	uint32 Release() const
	{
		const uint32 Refs = NumRefs.fetch_sub(1, std::memory_order_acq_rel) - 1;
		if (Refs == 0)
		{
			delete this;
		}
		return Refs;
	}

	uint32 GetRefCount() const { return NumRefs.load(std::memory_order_relaxed); }

private:
	mutable std::atomic<uint32> NumRefs{0};
};

/** Smart pointer to an object with AddRef/Release, holding one reference. */
template <typename ReferencedType>
class TRefCountPtr
{
public:
	TRefCountPtr() = default;

	TRefCountPtr(ReferencedType* InReference, bool bAddRef = true)
		: Reference(InReference)
	{
		if (Reference && bAddRef)
		{
			Reference->AddRef();
		}
	}
	TRefCountPtr(const TRefCountPtr& Copy)
		: TRefCountPtr(Copy.Reference)
	{
	}
	template <typename CopyReferencedType>
	explicit TRefCountPtr(const TRefCountPtr<CopyReferencedType>& Copy)
		: TRefCountPtr(static_cast<ReferencedType*>(Copy.GetReference()))
	{
	}
	TRefCountPtr(TRefCountPtr&& Move) noexcept
		: Reference(Move.Reference)
	{
		Move.Reference = nullptr;
	}
	~TRefCountPtr()
	{
		if (Reference)
		{
			Reference->Release();
		}
	}

	TRefCountPtr& operator=(ReferencedType* InReference)
	{
		if (Reference != InReference)
		{
			ReferencedType* Old = Reference;
			Reference = InReference;
			if (Reference)
			{
				Reference->AddRef();
			}
			if (Old)
			{
				Old->Release();
			}
		}
		return *this;
	}
	TRefCountPtr& operator=(const TRefCountPtr& InPtr) { return *this = InPtr.Reference; }
	TRefCountPtr& operator=(TRefCountPtr&& InPtr) noexcept
	{
		if (this != &InPtr)
		{
			ReferencedType* Old = Reference;
			Reference = InPtr.Reference;
			InPtr.Reference = nullptr;
			if (Old)
			{
				Old->Release();
			}
		}
		return *this;
	}

	ReferencedType* operator->() const { return Reference; }
	operator ReferencedType*() const { return Reference; }
	ReferencedType* GetReference() const { return Reference; }
	bool IsValid() const { return Reference != nullptr; }
	void SafeRelease() { *this = nullptr; }
	uint32 GetRefCount() { return Reference ? Reference->GetRefCount() : 0; }
	friend uint32 GetTypeHash(const TRefCountPtr& InPtr) { return ::PointerHash(InPtr.Reference); }

private:
	ReferencedType* Reference = nullptr;
};

/** Constructs a reference-counted object and returns a pointer holding the first reference. */
template <typename T, typename... TArgs>
TRefCountPtr<T> MakeRefCount(TArgs&&... Args)
{
	return TRefCountPtr<T>(new T(std::forward<TArgs>(Args)...));
}

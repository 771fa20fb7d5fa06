// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/SharedPointerFwd.h"
#include "Templates/TypeHash.h"
#include "Templates/UnrealTemplate.h"

#include <atomic>
#include <new>
#include <type_traits>
#include <utility>

namespace SharedPointerInternals
{
	/**
	 * The counts behind a group of shared and weak pointers. The weak count includes one reference held
	 * on behalf of all shared references together, so the block outlives the object while any weak
	 * pointer remains.
	 */
	template <ESPMode Mode>
	class TReferenceControllerBase
	{
		using CountType = std::conditional_t<Mode == ESPMode::ThreadSafe, std::atomic<int32>, int32>;

	public:
		TReferenceControllerBase() = default;
		TReferenceControllerBase(const TReferenceControllerBase&) = delete;
		TReferenceControllerBase& operator=(const TReferenceControllerBase&) = delete;
		virtual ~TReferenceControllerBase() = default;

		/** Destroys the shared object; called once, when the last shared reference goes. */
		virtual void DestroyObject() = 0;

		int32 GetSharedReferenceCount() const
		{
			if constexpr (Mode == ESPMode::ThreadSafe)
			{
				return SharedReferenceCount.load(std::memory_order_relaxed);
			}
			else
			{
				return SharedReferenceCount;
			}
		}

		void AddSharedReference()
		{
			if constexpr (Mode == ESPMode::ThreadSafe)
			{
				SharedReferenceCount.fetch_add(1, std::memory_order_relaxed);
			}
			else
			{
				++SharedReferenceCount;
			}
		}

		/** Adds a shared reference unless the object is already gone (used when a weak pointer is pinned). */
		bool ConditionallyAddSharedReference()
		{
			if constexpr (Mode == ESPMode::ThreadSafe)
			{
				int32 Current = SharedReferenceCount.load(std::memory_order_relaxed);
				while (Current != 0)
				{
					if (SharedReferenceCount.compare_exchange_weak(
							Current, Current + 1, std::memory_order_acquire, std::memory_order_relaxed))
					{
						return true;
					}
				}
				return false;
			}
			else
			{
				if (SharedReferenceCount == 0)
				{
					return false;
				}
				++SharedReferenceCount;
				return true;
			}
		}

		void ReleaseSharedReference()
		{
			int32 Remaining;
			if constexpr (Mode == ESPMode::ThreadSafe)
			{
				Remaining = SharedReferenceCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
			}
			else
			{
				Remaining = --SharedReferenceCount;
			}
			if (Remaining == 0)
			{
				DestroyObject();
				ReleaseWeakReference();
			}
		}

		void AddWeakReference()
		{
			if constexpr (Mode == ESPMode::ThreadSafe)
			{
				WeakReferenceCount.fetch_add(1, std::memory_order_relaxed);
			}
			else
			{
				++WeakReferenceCount;
			}
		}

		void ReleaseWeakReference()
		{
			int32 Remaining;
			if constexpr (Mode == ESPMode::ThreadSafe)
			{
				Remaining = WeakReferenceCount.fetch_sub(1, std::memory_order_acq_rel) - 1;
			}
			else
			{
				Remaining = --WeakReferenceCount;
			}
			if (Remaining == 0)
			{
				delete this;
			}
		}

	private:
		CountType SharedReferenceCount{1};
		CountType WeakReferenceCount{1};
	};

	/** Counts for an object allocated elsewhere and released through a deleter. */
	template <typename ObjectType, typename DeleterType, ESPMode Mode>
	class TReferenceControllerWithDeleter final : public TReferenceControllerBase<Mode>
	{
	public:
		TReferenceControllerWithDeleter(ObjectType* InObject, DeleterType&& InDeleter)
			: Object(InObject)
			, Deleter(std::move(InDeleter))
		{
		}

		void DestroyObject() override { Deleter(Object); }

	private:
		ObjectType* Object;
		DeleterType Deleter;
	};

	/** Counts and object in one allocation, as MakeShared creates them. */
	template <typename ObjectType, ESPMode Mode>
	class TIntrusiveReferenceController final : public TReferenceControllerBase<Mode>
	{
	public:
		template <typename... ArgTypes>
		explicit TIntrusiveReferenceController(ArgTypes&&... Args)
		{
			::new (static_cast<void*>(Storage)) ObjectType(std::forward<ArgTypes>(Args)...);
		}

		ObjectType* GetObjectPtr() { return std::launder(reinterpret_cast<ObjectType*>(Storage)); }

		void DestroyObject() override { GetObjectPtr()->~ObjectType(); }

	private:
		alignas(ObjectType) unsigned char Storage[sizeof(ObjectType)];
	};

	template <typename Type>
	struct DefaultDeleter
	{
		void operator()(Type* Object) const { delete Object; }
	};

	/** What MakeShareable returns: a raw pointer waiting to be owned by a shared pointer or reference. */
	template <class ObjectType>
	struct TRawPtrProxy
	{
		ObjectType* Object;

		explicit TRawPtrProxy(ObjectType* InObject)
			: Object(InObject)
		{
		}
	};

	template <class ObjectType, typename DeleterType>
	struct TRawPtrProxyWithDeleter
	{
		ObjectType* Object;
		DeleterType Deleter;

		TRawPtrProxyWithDeleter(ObjectType* InObject, DeleterType&& InDeleter)
			: Object(InObject)
			, Deleter(std::move(InDeleter))
		{
		}
	};

	template <ESPMode Mode, typename ObjectType>
	TReferenceControllerBase<Mode>* NewDefaultReferenceController(ObjectType* Object)
	{
		return Object ? new TReferenceControllerWithDeleter<ObjectType, DefaultDeleter<ObjectType>, Mode>(
							Object, DefaultDeleter<ObjectType>())
					  : nullptr;
	}

	template <ESPMode Mode, typename ObjectType, typename DeleterType>
	TReferenceControllerBase<Mode>* NewCustomReferenceController(ObjectType* Object, DeleterType&& Deleter)
	{
		return new TReferenceControllerWithDeleter<ObjectType, std::decay_t<DeleterType>, Mode>(
			Object, std::decay_t<DeleterType>(std::forward<DeleterType>(Deleter)));
	}

	/** One shared reference to a controller; copying adds a reference, destruction releases it. */
	template <ESPMode Mode>
	class FSharedReferencer
	{
	public:
		FSharedReferencer() = default;
		explicit FSharedReferencer(TReferenceControllerBase<Mode>* InController)
			: Controller(InController)
		{
		}
		FSharedReferencer(const FSharedReferencer& Other)
			: Controller(Other.Controller)
		{
			if (Controller)
			{
				Controller->AddSharedReference();
			}
		}
		FSharedReferencer(FSharedReferencer&& Other) noexcept
			: Controller(Other.Controller)
		{
			Other.Controller = nullptr;
		}
		FSharedReferencer& operator=(const FSharedReferencer& Other)
		{
			if (Other.Controller)
			{
				Other.Controller->AddSharedReference();
			}
			TReferenceControllerBase<Mode>* Old = Controller;
			Controller = Other.Controller;
			if (Old)
			{
				Old->ReleaseSharedReference();
			}
			return *this;
		}
		FSharedReferencer& operator=(FSharedReferencer&& Other) noexcept
		{
			if (this != &Other)
			{
				TReferenceControllerBase<Mode>* Old = Controller;
				Controller = Other.Controller;
				Other.Controller = nullptr;
				if (Old)
				{
					Old->ReleaseSharedReference();
				}
			}
			return *this;
		}
		~FSharedReferencer()
		{
			if (Controller)
			{
				Controller->ReleaseSharedReference();
			}
		}

		/** Takes a shared reference from a weak one, or stays empty if the object is gone. */
		static FSharedReferencer FromWeak(TReferenceControllerBase<Mode>* InController)
		{
			FSharedReferencer Result;
			if (InController && InController->ConditionallyAddSharedReference())
			{
				Result.Controller = InController;
			}
			return Result;
		}

		int32 GetSharedReferenceCount() const { return Controller ? Controller->GetSharedReferenceCount() : 0; }
		bool IsValid() const { return Controller != nullptr; }
		TReferenceControllerBase<Mode>* GetController() const { return Controller; }

	private:
		TReferenceControllerBase<Mode>* Controller = nullptr;
	};

	/** One weak reference to a controller. */
	template <ESPMode Mode>
	class FWeakReferencer
	{
	public:
		FWeakReferencer() = default;
		explicit FWeakReferencer(TReferenceControllerBase<Mode>* InController)
			: Controller(InController)
		{
			if (Controller)
			{
				Controller->AddWeakReference();
			}
		}
		FWeakReferencer(const FWeakReferencer& Other)
			: FWeakReferencer(Other.Controller)
		{
		}
		FWeakReferencer(FWeakReferencer&& Other) noexcept
			: Controller(Other.Controller)
		{
			Other.Controller = nullptr;
		}
		FWeakReferencer& operator=(const FWeakReferencer& Other)
		{
			Assign(Other.Controller);
			return *this;
		}
		FWeakReferencer& operator=(FWeakReferencer&& Other) noexcept
		{
			if (this != &Other)
			{
				TReferenceControllerBase<Mode>* Old = Controller;
				Controller = Other.Controller;
				Other.Controller = nullptr;
				if (Old)
				{
					Old->ReleaseWeakReference();
				}
			}
			return *this;
		}
		~FWeakReferencer()
		{
			if (Controller)
			{
				Controller->ReleaseWeakReference();
			}
		}

		void Assign(TReferenceControllerBase<Mode>* NewController)
		{
			if (NewController)
			{
				NewController->AddWeakReference();
			}
			TReferenceControllerBase<Mode>* Old = Controller;
			Controller = NewController;
			if (Old)
			{
				Old->ReleaseWeakReference();
			}
		}

		/** True while the object is alive. */
		bool IsValid() const { return Controller != nullptr && Controller->GetSharedReferenceCount() > 0; }
		TReferenceControllerBase<Mode>* GetController() const { return Controller; }

	private:
		TReferenceControllerBase<Mode>* Controller = nullptr;
	};

	/** Tag of the constructor MakeShared uses. */
	struct FMakeSharedTag
	{
	};

	template <class SharedPtrType, class ObjectType, class OtherType, ESPMode Mode>
	void EnableSharedFromThis(const TSharedPtr<SharedPtrType, Mode>* InSharedPtr, const ObjectType* InObject,
		const TSharedFromThis<OtherType, Mode>* InShareable);
	template <class SharedRefType, class ObjectType, class OtherType, ESPMode Mode>
	void EnableSharedFromThis(const TSharedRef<SharedRefType, Mode>* InSharedRef, const ObjectType* InObject,
		const TSharedFromThis<OtherType, Mode>* InShareable);

	/** Objects that do not derive from TSharedFromThis need nothing. */
	inline void EnableSharedFromThis(...) {}
} // namespace SharedPointerInternals

/** A shared reference: like a shared pointer, but never null. */
template <class ObjectType, ESPMode Mode>
class TSharedRef
{
	template <class, ESPMode>
	friend class TSharedRef;
	template <class, ESPMode>
	friend class TSharedPtr;
	template <class, ESPMode>
	friend class TWeakPtr;

public:
	using ElementType = ObjectType;
	static constexpr ESPMode ShareMode = Mode;

	/** Takes ownership of a new'd object; the pointer must not be null. */
	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) explicit TSharedRef(OtherType* InObject)
		: Object(InObject)
	{
		CheckNotNull(InObject);
		SharedReferenceCount = SharedPointerInternals::FSharedReferencer<Mode>(
			SharedPointerInternals::NewDefaultReferenceController<Mode>(InObject));
		SharedPointerInternals::EnableSharedFromThis(this, InObject, InObject);
	}

	template <typename OtherType, typename DeleterType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedRef(OtherType* InObject, DeleterType&& InDeleter)
		: Object(InObject)
	{
		CheckNotNull(InObject);
		SharedReferenceCount = SharedPointerInternals::FSharedReferencer<Mode>(
			SharedPointerInternals::NewCustomReferenceController<Mode>(InObject, std::forward<DeleterType>(InDeleter)));
		SharedPointerInternals::EnableSharedFromThis(this, InObject, InObject);
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>)
		TSharedRef(const SharedPointerInternals::TRawPtrProxy<OtherType>& InRawPtrProxy)
		: TSharedRef(InRawPtrProxy.Object)
	{
	}

	template <typename OtherType, typename DeleterType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>)
		TSharedRef(SharedPointerInternals::TRawPtrProxyWithDeleter<OtherType, DeleterType>&& InRawPtrProxy)
		: TSharedRef(InRawPtrProxy.Object, std::move(InRawPtrProxy.Deleter))
	{
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedRef(const TSharedRef<OtherType, Mode>& InSharedRef)
		: Object(InSharedRef.Object)
		, SharedReferenceCount(InSharedRef.SharedReferenceCount)
	{
	}

	/** Shares ownership with OtherSharedRef while pointing at InObject (a member or base of it). */
	template <typename OtherType>
	TSharedRef(const TSharedRef<OtherType, Mode>& OtherSharedRef, ObjectType* InObject)
		: Object(InObject)
		, SharedReferenceCount(OtherSharedRef.SharedReferenceCount)
	{
		CheckNotNull(InObject);
	}

	TSharedRef(const TSharedRef& InSharedRef) = default;

	/** A move leaves the source valid too: a shared reference is never null. */
	TSharedRef(TSharedRef&& InSharedRef)
		: Object(InSharedRef.Object)
		, SharedReferenceCount(InSharedRef.SharedReferenceCount)
	{
	}

	TSharedRef& operator=(const TSharedRef& InSharedRef) = default;
	TSharedRef& operator=(TSharedRef&& InSharedRef)
	{
		::Swap(Object, InSharedRef.Object);
		::Swap(SharedReferenceCount, InSharedRef.SharedReferenceCount);
		return *this;
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedRef& operator=(
		const SharedPointerInternals::TRawPtrProxy<OtherType>& InRawPtrProxy)
	{
		*this = TSharedRef(InRawPtrProxy);
		return *this;
	}

	/** Internal: used by MakeShared to adopt an object built inside its reference controller. */
	TSharedRef(SharedPointerInternals::FMakeSharedTag, ObjectType* InObject,
		SharedPointerInternals::TReferenceControllerBase<Mode>* InController)
		: Object(InObject)
		, SharedReferenceCount(InController)
	{
		SharedPointerInternals::EnableSharedFromThis(this, InObject, InObject);
	}

	TSharedPtr<ObjectType, Mode> ToSharedPtr() const { return TSharedPtr<ObjectType, Mode>(*this); }
	TWeakPtr<ObjectType, Mode> ToWeakPtr() const { return TWeakPtr<ObjectType, Mode>(*this); }

	ObjectType& Get() const { return *Object; }
	ObjectType& operator*() const { return *Object; }
	ObjectType* operator->() const { return Object; }

	int32 GetSharedReferenceCount() const { return SharedReferenceCount.GetSharedReferenceCount(); }

	/** True when this is the only shared reference; weak pointers do not count. */
	bool IsUnique() const { return GetSharedReferenceCount() == 1; }

	/** Always true: a shared reference cannot be null. */
	bool IsValid() const { return true; }

private:
	template <typename OtherType>
	explicit TSharedRef(const TSharedPtr<OtherType, Mode>& InSharedPtr)
		: Object(InSharedPtr.Object)
		, SharedReferenceCount(InSharedPtr.SharedReferenceCount)
	{
		CheckNotNull(Object);
	}

	static void CheckNotNull(const void* InObject)
	{
		if (UNLIKELY(InObject == nullptr))
		{
			FDebug::AssertFailed("InObject != nullptr", __FILE__, __LINE__, TEXT("A TSharedRef cannot be null."));
		}
	}

	ObjectType* Object;
	SharedPointerInternals::FSharedReferencer<Mode> SharedReferenceCount;
};

/** A reference-counted pointer; the object is destroyed when the last shared pointer or reference to it goes. */
template <class ObjectType, ESPMode Mode>
class TSharedPtr
{
	template <class, ESPMode>
	friend class TSharedRef;
	template <class, ESPMode>
	friend class TSharedPtr;
	template <class, ESPMode>
	friend class TWeakPtr;

public:
	using ElementType = ObjectType;
	static constexpr ESPMode ShareMode = Mode;

	TSharedPtr(std::nullptr_t = nullptr) {}

	/** Takes ownership of a new'd object (null gives an empty pointer). */
	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) explicit TSharedPtr(OtherType* InObject)
		: Object(InObject)
		, SharedReferenceCount(SharedPointerInternals::NewDefaultReferenceController<Mode>(InObject))
	{
		SharedPointerInternals::EnableSharedFromThis(this, InObject, InObject);
	}

	template <typename OtherType, typename DeleterType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedPtr(OtherType* InObject, DeleterType&& InDeleter)
		: Object(InObject)
		, SharedReferenceCount(SharedPointerInternals::NewCustomReferenceController<Mode>(
			  InObject, std::forward<DeleterType>(InDeleter)))
	{
		SharedPointerInternals::EnableSharedFromThis(this, InObject, InObject);
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>)
		TSharedPtr(const SharedPointerInternals::TRawPtrProxy<OtherType>& InRawPtrProxy)
		: TSharedPtr(InRawPtrProxy.Object)
	{
	}

	template <typename OtherType, typename DeleterType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>)
		TSharedPtr(SharedPointerInternals::TRawPtrProxyWithDeleter<OtherType, DeleterType>&& InRawPtrProxy)
		: TSharedPtr(InRawPtrProxy.Object, std::move(InRawPtrProxy.Deleter))
	{
	}

	TSharedPtr(const TSharedPtr&) = default;
	TSharedPtr(TSharedPtr&& Other) noexcept
		: Object(Other.Object)
		, SharedReferenceCount(std::move(Other.SharedReferenceCount))
	{
		Other.Object = nullptr;
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedPtr(const TSharedPtr<OtherType, Mode>& Other)
		: Object(Other.Object)
		, SharedReferenceCount(Other.SharedReferenceCount)
	{
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedPtr(TSharedPtr<OtherType, Mode>&& Other)
		: Object(Other.Object)
		, SharedReferenceCount(std::move(Other.SharedReferenceCount))
	{
		Other.Object = nullptr;
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedPtr(const TSharedRef<OtherType, Mode>& InSharedRef)
		: Object(InSharedRef.Object)
		, SharedReferenceCount(InSharedRef.SharedReferenceCount)
	{
	}

	/** Shares ownership with Other while pointing at InObject (a member or base of it). */
	template <typename OtherType>
	TSharedPtr(const TSharedPtr<OtherType, Mode>& Other, ObjectType* InObject)
		: Object(InObject)
		, SharedReferenceCount(Other.SharedReferenceCount)
	{
	}
	template <typename OtherType>
	TSharedPtr(const TSharedRef<OtherType, Mode>& Other, ObjectType* InObject)
		: Object(InObject)
		, SharedReferenceCount(Other.SharedReferenceCount)
	{
	}

	TSharedPtr& operator=(const TSharedPtr&) = default;
	TSharedPtr& operator=(TSharedPtr&& Other) noexcept
	{
		if (this != &Other)
		{
			Object = Other.Object;
			SharedReferenceCount = std::move(Other.SharedReferenceCount);
			Other.Object = nullptr;
		}
		return *this;
	}
	TSharedPtr& operator=(std::nullptr_t)
	{
		Reset();
		return *this;
	}
	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TSharedPtr& operator=(
		const SharedPointerInternals::TRawPtrProxy<OtherType>& InRawPtrProxy)
	{
		*this = TSharedPtr(InRawPtrProxy);
		return *this;
	}

	/** Converts to a shared reference; the pointer must be valid. */
	TSharedRef<ObjectType, Mode> ToSharedRef() const { return TSharedRef<ObjectType, Mode>(*this); }
	TWeakPtr<ObjectType, Mode> ToWeakPtr() const { return TWeakPtr<ObjectType, Mode>(*this); }

	ObjectType* Get() const { return Object; }
	explicit operator bool() const { return Object != nullptr; }
	bool IsValid() const { return Object != nullptr; }
	std::add_lvalue_reference_t<ObjectType> operator*() const
	{
		check(IsValid());
		return *Object;
	}
	ObjectType* operator->() const
	{
		check(IsValid());
		return Object;
	}

	/** Drops this reference; the object is destroyed if it was the last one. */
	void Reset() { *this = TSharedPtr(); }

	int32 GetSharedReferenceCount() const { return SharedReferenceCount.GetSharedReferenceCount(); }

	/** True when this is the only shared reference; weak pointers do not count. */
	bool IsUnique() const { return GetSharedReferenceCount() == 1; }

private:
	/** Pins a weak pointer: valid only if the object is still alive. */
	template <typename OtherType>
	explicit TSharedPtr(const TWeakPtr<OtherType, Mode>& InWeakPtr)
		: SharedReferenceCount(
			  SharedPointerInternals::FSharedReferencer<Mode>::FromWeak(InWeakPtr.WeakReferenceCount.GetController()))
	{
		Object = SharedReferenceCount.IsValid() ? InWeakPtr.Object : nullptr;
	}

	ObjectType* Object = nullptr;
	SharedPointerInternals::FSharedReferencer<Mode> SharedReferenceCount;
};

/** Observes a shared object without keeping it alive; Pin() gives a shared pointer while it lives. */
template <class ObjectType, ESPMode Mode>
class TWeakPtr
{
	template <class, ESPMode>
	friend class TWeakPtr;
	template <class, ESPMode>
	friend class TSharedPtr;

public:
	using ElementType = ObjectType;

	TWeakPtr(std::nullptr_t = nullptr) {}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TWeakPtr(const TSharedRef<OtherType, Mode>& InSharedRef)
		: Object(InSharedRef.Object)
		, WeakReferenceCount(InSharedRef.SharedReferenceCount.GetController())
	{
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TWeakPtr(const TSharedPtr<OtherType, Mode>& InSharedPtr)
		: Object(InSharedPtr.Object)
		, WeakReferenceCount(InSharedPtr.SharedReferenceCount.GetController())
	{
	}

	TWeakPtr(const TWeakPtr&) = default;
	TWeakPtr(TWeakPtr&& Other) noexcept
		: Object(Other.Object)
		, WeakReferenceCount(std::move(Other.WeakReferenceCount))
	{
		Other.Object = nullptr;
	}

	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TWeakPtr(const TWeakPtr<OtherType, Mode>& Other)
		: Object(Other.Object)
		, WeakReferenceCount(Other.WeakReferenceCount)
	{
	}

	TWeakPtr& operator=(const TWeakPtr&) = default;
	TWeakPtr& operator=(TWeakPtr&& Other) noexcept
	{
		if (this != &Other)
		{
			Object = Other.Object;
			WeakReferenceCount = std::move(Other.WeakReferenceCount);
			Other.Object = nullptr;
		}
		return *this;
	}
	TWeakPtr& operator=(std::nullptr_t)
	{
		Reset();
		return *this;
	}
	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TWeakPtr& operator=(
		const TSharedRef<OtherType, Mode>& InSharedRef)
	{
		Object = InSharedRef.Object;
		WeakReferenceCount.Assign(InSharedRef.SharedReferenceCount.GetController());
		return *this;
	}
	template <typename OtherType>
	requires(std::is_convertible_v<OtherType*, ObjectType*>) TWeakPtr& operator=(
		const TSharedPtr<OtherType, Mode>& InSharedPtr)
	{
		Object = InSharedPtr.Object;
		WeakReferenceCount.Assign(InSharedPtr.SharedReferenceCount.GetController());
		return *this;
	}

	/** A shared pointer to the object, or an empty one if it has been destroyed. */
	TSharedPtr<ObjectType, Mode> Pin() const { return TSharedPtr<ObjectType, Mode>(*this); }

	/** True while the object is alive. */
	bool IsValid() const { return Object != nullptr && WeakReferenceCount.IsValid(); }

	void Reset() { *this = TWeakPtr(); }

	/** True if this observes the object at InOtherPtr and it is still alive. */
	bool HasSameObject(const void* InOtherPtr) const { return Pin().Get() == InOtherPtr; }

	friend uint32 GetTypeHash(const TWeakPtr& WeakPtr) { return ::PointerHash(WeakPtr.Object); }

	friend bool operator==(const TWeakPtr& Lhs, const TWeakPtr& Rhs) { return Lhs.Pin().Get() == Rhs.Pin().Get(); }
	friend bool operator==(const TWeakPtr& Lhs, std::nullptr_t) { return !Lhs.IsValid(); }

private:
	ObjectType* Object = nullptr;
	SharedPointerInternals::FWeakReferencer<Mode> WeakReferenceCount;
};

/** Lets an object owned by shared pointers hand out more shared references to itself. */
template <class ObjectType, ESPMode Mode>
class TSharedFromThis
{
public:
	/** A shared reference to this object; it must already be owned by a shared pointer or reference. */
	TSharedRef<ObjectType, Mode> AsShared()
	{
		TSharedPtr<ObjectType, Mode> SharedThis(WeakThis.Pin());
		CheckShared(SharedThis.Get() == this);
		return SharedThis.ToSharedRef();
	}
	TSharedRef<const ObjectType, Mode> AsShared() const
	{
		TSharedPtr<const ObjectType, Mode> SharedThis(WeakThis.Pin());
		CheckShared(SharedThis.Get() == this);
		return SharedThis.ToSharedRef();
	}

	TWeakPtr<ObjectType, Mode> AsWeak() { return WeakThis; }
	TWeakPtr<const ObjectType, Mode> AsWeak() const { return WeakThis; }

	/** True once a shared pointer owns this object and while it still does. */
	bool DoesSharedInstanceExist() const { return WeakThis.IsValid(); }

	/** Internal: called when a shared pointer takes ownership, to remember it. */
	template <class SharedPtrType, class OtherType>
	void UpdateWeakReferenceInternal(const TSharedPtr<SharedPtrType, Mode>* InSharedPtr, OtherType* InObject) const
	{
		if (!WeakThis.IsValid())
		{
			WeakThis = TSharedPtr<ObjectType, Mode>(*InSharedPtr, InObject);
		}
	}
	template <class SharedRefType, class OtherType>
	void UpdateWeakReferenceInternal(const TSharedRef<SharedRefType, Mode>* InSharedRef, OtherType* InObject) const
	{
		if (!WeakThis.IsValid())
		{
			WeakThis = TSharedPtr<ObjectType, Mode>(*InSharedRef, InObject);
		}
	}

protected:
	TSharedFromThis() = default;
	// A copy is a different object: it must not inherit the original's owner.
	TSharedFromThis(const TSharedFromThis&) {}
	TSharedFromThis& operator=(const TSharedFromThis&) { return *this; }
	~TSharedFromThis() = default;

	/** A shared reference to this object, typed as the derived class. */
	template <class OtherType>
	static TSharedRef<OtherType, Mode> SharedThis(OtherType* ThisPtr)
	{
		return TSharedRef<OtherType, Mode>(ThisPtr->AsShared(), ThisPtr);
	}
	template <class OtherType>
	static TSharedRef<const OtherType, Mode> SharedThis(const OtherType* ThisPtr)
	{
		return TSharedRef<const OtherType, Mode>(ThisPtr->AsShared(), ThisPtr);
	}

private:
	static void CheckShared(bool bCondition)
	{
		if (UNLIKELY(!bCondition))
		{
			FDebug::AssertFailed("SharedThis.Get() == this", __FILE__, __LINE__,
				TEXT("AsShared() was called on an object that is not (or not yet, or no longer) owned by a shared "
					 "pointer."));
		}
	}

	mutable TWeakPtr<ObjectType, Mode> WeakThis;
};

namespace SharedPointerInternals
{
	template <class SharedPtrType, class ObjectType, class OtherType, ESPMode Mode>
	void EnableSharedFromThis(const TSharedPtr<SharedPtrType, Mode>* InSharedPtr, const ObjectType* InObject,
		const TSharedFromThis<OtherType, Mode>* InShareable)
	{
		if (InShareable != nullptr)
		{
			InShareable->UpdateWeakReferenceInternal(InSharedPtr, const_cast<ObjectType*>(InObject));
		}
	}

	template <class SharedRefType, class ObjectType, class OtherType, ESPMode Mode>
	void EnableSharedFromThis(const TSharedRef<SharedRefType, Mode>* InSharedRef, const ObjectType* InObject,
		const TSharedFromThis<OtherType, Mode>* InShareable)
	{
		if (InShareable != nullptr)
		{
			InShareable->UpdateWeakReferenceInternal(InSharedRef, const_cast<ObjectType*>(InObject));
		}
	}
} // namespace SharedPointerInternals

/** Constructs an object and its reference counts in one allocation. */
template <typename InObjectType, ESPMode InMode = ESPMode::ThreadSafe, typename... InArgTypes>
[[nodiscard]] TSharedRef<InObjectType, InMode> MakeShared(InArgTypes&&... Args)
{
	auto* Controller = new SharedPointerInternals::TIntrusiveReferenceController<InObjectType, InMode>(
		std::forward<InArgTypes>(Args)...);
	return TSharedRef<InObjectType, InMode>(
		SharedPointerInternals::FMakeSharedTag(), Controller->GetObjectPtr(), Controller);
}

/** Wraps a new'd object so it can initialise a shared pointer or reference of any mode. */
template <class ObjectType>
[[nodiscard]] SharedPointerInternals::TRawPtrProxy<ObjectType> MakeShareable(ObjectType* InObject)
{
	return SharedPointerInternals::TRawPtrProxy<ObjectType>(InObject);
}

/** As MakeShareable, with a deleter called instead of delete when the last shared reference goes. */
template <class ObjectType, class DeleterType>
[[nodiscard]] SharedPointerInternals::TRawPtrProxyWithDeleter<ObjectType, std::decay_t<DeleterType>> MakeShareable(
	ObjectType* InObject, DeleterType&& InDeleter)
{
	return SharedPointerInternals::TRawPtrProxyWithDeleter<ObjectType, std::decay_t<DeleterType>>(
		InObject, std::decay_t<DeleterType>(std::forward<DeleterType>(InDeleter)));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedRef<CastToType, Mode> StaticCastSharedRef(const TSharedRef<CastFromType, Mode>& InSharedRef)
{
	return TSharedRef<CastToType, Mode>(InSharedRef, static_cast<CastToType*>(&InSharedRef.Get()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedPtr<CastToType, Mode> StaticCastSharedPtr(const TSharedPtr<CastFromType, Mode>& InSharedPtr)
{
	return TSharedPtr<CastToType, Mode>(InSharedPtr, static_cast<CastToType*>(InSharedPtr.Get()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedRef<CastToType, Mode> ConstCastSharedRef(const TSharedRef<CastFromType, Mode>& InSharedRef)
{
	return TSharedRef<CastToType, Mode>(InSharedRef, const_cast<CastToType*>(&InSharedRef.Get()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TSharedPtr<CastToType, Mode> ConstCastSharedPtr(const TSharedPtr<CastFromType, Mode>& InSharedPtr)
{
	return TSharedPtr<CastToType, Mode>(InSharedPtr, const_cast<CastToType*>(InSharedPtr.Get()));
}

template <class CastToType, class CastFromType, ESPMode Mode>
TWeakPtr<CastToType, Mode> StaticCastWeakPtr(const TWeakPtr<CastFromType, Mode>& InWeakPtr)
{
	return TWeakPtr<CastToType, Mode>(StaticCastSharedPtr<CastToType>(InWeakPtr.Pin()));
}

template <class ObjectTypeA, class ObjectTypeB, ESPMode Mode>
bool operator==(const TSharedRef<ObjectTypeA, Mode>& InSharedRefA, const TSharedRef<ObjectTypeB, Mode>& InSharedRefB)
{
	return &InSharedRefA.Get() == &InSharedRefB.Get();
}

template <class ObjectTypeA, class ObjectTypeB, ESPMode Mode>
bool operator==(const TSharedPtr<ObjectTypeA, Mode>& InSharedPtrA, const TSharedPtr<ObjectTypeB, Mode>& InSharedPtrB)
{
	return InSharedPtrA.Get() == InSharedPtrB.Get();
}

template <class ObjectTypeA, class ObjectTypeB, ESPMode Mode>
bool operator==(const TSharedRef<ObjectTypeA, Mode>& InSharedRef, const TSharedPtr<ObjectTypeB, Mode>& InSharedPtr)
{
	return InSharedPtr.Get() == &InSharedRef.Get();
}

template <class ObjectType, ESPMode Mode>
bool operator==(const TSharedPtr<ObjectType, Mode>& InSharedPtr, std::nullptr_t)
{
	return !InSharedPtr.IsValid();
}

template <class ObjectType, ESPMode Mode>
uint32 GetTypeHash(const TSharedRef<ObjectType, Mode>& InSharedRef)
{
	return ::PointerHash(&InSharedRef.Get());
}

template <class ObjectType, ESPMode Mode>
uint32 GetTypeHash(const TSharedPtr<ObjectType, Mode>& InSharedPtr)
{
	return ::PointerHash(InSharedPtr.Get());
}

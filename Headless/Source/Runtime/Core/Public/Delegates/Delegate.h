// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Delegates/DelegateInstancesImpl.h"
#include "Delegates/IDelegateInstance.h"
#include "Misc/AssertionMacros.h"
#include "Templates/SharedPointer.h"
#include "UObject/WeakObjectPtrTemplatesFwd.h"

#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

class UObject;

/** The default user policy of delegates: not thread-safe, as everywhere in the game thread's code. */
struct FDefaultDelegateUserPolicy
{
};

/** A user policy that states the delegate is used from one thread only. */
struct FNotThreadSafeDelegateUserPolicy
{
};

/** A user policy that states the delegate is used from one thread only, without race detection. */
struct FNotThreadSafeNotCheckedDelegateUserPolicy
{
};

template <typename DelegateSignature, typename UserPolicy = FDefaultDelegateUserPolicy>
class TDelegate;

template <typename DelegateSignature, typename UserPolicy = FDefaultDelegateUserPolicy>
class TMulticastDelegate;

/**
 * A single-cast delegate: holds at most one binding (a lambda, a free function, or a method of an
 * object held by plain, shared or UObject pointer) and calls it with Execute. Payload values given at
 * bind time are stored in the delegate and appended to the call's arguments.
 */
template <typename InRetValType, typename... ParamTypes, typename UserPolicy>
class TDelegate<InRetValType(ParamTypes...), UserPolicy>
{
	using FuncType = InRetValType(ParamTypes...);
	using InstanceType = UE::Delegates::Private::IBaseDelegateInstance<FuncType>;

	template <typename, typename>
	friend class TMulticastDelegate;

	template <bool bConst, typename Class, typename... VarTypes>
	using TMethodPtr = typename UE::Delegates::Private::TMemFunPtrType<bConst, Class,
		InRetValType(ParamTypes..., std::decay_t<VarTypes>...)>::Type;

public:
	using RetValType = InRetValType;
	using TFuncType = FuncType;

	/** An unbound delegate. */
	TDelegate() = default;

	/** An unbound delegate. */
	TDelegate(decltype(nullptr)) {}

	/** Copies the binding, payload and handle included. */
	TDelegate(const TDelegate& Other)
		: Instance(Other.Instance ? Other.Instance->Clone() : nullptr)
	{
	}

	TDelegate(TDelegate&& Other) = default;

	TDelegate& operator=(const TDelegate& Other)
	{
		if (this != &Other)
		{
			Instance = Other.Instance ? Other.Instance->Clone() : nullptr;
		}
		return *this;
	}

	TDelegate& operator=(TDelegate&& Other) = default;

	~TDelegate() = default;

	/** A delegate calling a lambda or other callable. */
	template <typename FunctorType, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateLambda(FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		using FBinding = UE::Delegates::Private::TFunctorBinding<std::decay_t<FunctorType>>;
		return MakeBound(FBinding{std::forward<FunctorType>(InFunctor)}, std::forward<VarTypes>(Vars)...);
	}

	/** A delegate calling a free or static function. */
	template <typename... VarTypes>
	[[nodiscard]] static TDelegate CreateStatic(
		std::type_identity_t<InRetValType (*)(ParamTypes..., std::decay_t<VarTypes>...)> InFunc, VarTypes&&... Vars)
	{
		using FBinding =
			UE::Delegates::Private::TFunctorBinding<InRetValType (*)(ParamTypes..., std::decay_t<VarTypes>...)>;
		return MakeBound(FBinding{InFunc}, std::forward<VarTypes>(Vars)...);
	}

	/** A delegate calling a method through a plain pointer; the object must outlive the binding. */
	template <typename UserClass, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateRaw(
		UserClass* InUserObject, TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		static_assert(!std::is_const_v<UserClass>, "A non-const method cannot be bound to a const object.");
		using FBinding =
			UE::Delegates::Private::TRawMethodBinding<UserClass, TMethodPtr<false, UserClass, VarTypes...>>;
		return MakeBound(FBinding{InUserObject, InFunc}, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateRaw(
		const UserClass* InUserObject, TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		using FBinding =
			UE::Delegates::Private::TRawMethodBinding<const UserClass, TMethodPtr<true, UserClass, VarTypes...>>;
		return MakeBound(FBinding{InUserObject, InFunc}, std::forward<VarTypes>(Vars)...);
	}

	/** A delegate calling a method of a shared object; it becomes unbound when the object is destroyed. */
	template <typename UserClass, ESPMode Mode, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateSP(const TSharedRef<UserClass, Mode>& InUserObjectRef,
		TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		static_assert(!std::is_const_v<UserClass>, "A non-const method cannot be bound to a const object.");
		using FBinding =
			UE::Delegates::Private::TSPMethodBinding<UserClass, Mode, TMethodPtr<false, UserClass, VarTypes...>>;
		return MakeBound(FBinding{TWeakPtr<UserClass, Mode>(InUserObjectRef), &InUserObjectRef.Get(), InFunc},
			std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, ESPMode Mode, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateSP(const TSharedRef<UserClass, Mode>& InUserObjectRef,
		TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		using FBinding =
			UE::Delegates::Private::TSPMethodBinding<const UserClass, Mode, TMethodPtr<true, UserClass, VarTypes...>>;
		return MakeBound(FBinding{TWeakPtr<const UserClass, Mode>(InUserObjectRef), &InUserObjectRef.Get(), InFunc},
			std::forward<VarTypes>(Vars)...);
	}

	/** As CreateSP with a shared reference, for an object deriving from TSharedFromThis. */
	template <typename UserClass, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateSP(
		UserClass* InUserObject, TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		static_assert(!std::is_const_v<UserClass>, "A non-const method cannot be bound to a const object.");
		return CreateSP(
			StaticCastSharedRef<UserClass>(InUserObject->AsShared()), InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateSP(
		const UserClass* InUserObject, TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		return CreateSP(
			StaticCastSharedRef<const UserClass>(InUserObject->AsShared()), InFunc, std::forward<VarTypes>(Vars)...);
	}

	/** A delegate calling a lambda while a shared owner lives; it becomes unbound when the owner is destroyed. */
	template <typename UserClass, ESPMode Mode, typename FunctorType, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateSPLambda(
		const TSharedRef<UserClass, Mode>& InUserObjectRef, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		using FBinding = UE::Delegates::Private::TSPLambdaBinding<UserClass, Mode, std::decay_t<FunctorType>>;
		return MakeBound(FBinding{TWeakPtr<UserClass, Mode>(InUserObjectRef), &InUserObjectRef.Get(),
							 std::forward<FunctorType>(InFunctor)},
			std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename FunctorType, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateSPLambda(UserClass* InUserObject, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		return CreateSPLambda(StaticCastSharedRef<UserClass>(InUserObject->AsShared()),
			std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...);
	}

	/** A delegate calling a method of a UObject; it becomes unbound when the object is destroyed. */
	template <typename UserClass, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateUObject(
		UserClass* InUserObject, TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		static_assert(!std::is_const_v<UserClass>, "A non-const method cannot be bound to a const object.");
		using FBinding =
			UE::Delegates::Private::TUObjectMethodBinding<UserClass, TMethodPtr<false, UserClass, VarTypes...>>;
		return MakeBound(FBinding{TWeakObjectPtr<UserClass>(InUserObject), InFunc}, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateUObject(
		const UserClass* InUserObject, TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		using FBinding =
			UE::Delegates::Private::TUObjectMethodBinding<const UserClass, TMethodPtr<true, UserClass, VarTypes...>>;
		return MakeBound(
			FBinding{TWeakObjectPtr<const UserClass>(InUserObject), InFunc}, std::forward<VarTypes>(Vars)...);
	}

	/** A delegate calling a lambda while a UObject owner lives; it becomes unbound when the owner is destroyed. */
	template <typename UserClass, typename FunctorType, typename... VarTypes>
	[[nodiscard]] static TDelegate CreateWeakLambda(
		UserClass* InUserObject, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		using FBinding = UE::Delegates::Private::TWeakLambdaBinding<UserClass, std::decay_t<FunctorType>>;
		return MakeBound(FBinding{TWeakObjectPtr<UserClass>(InUserObject), std::forward<FunctorType>(InFunctor)},
			std::forward<VarTypes>(Vars)...);
	}

	template <typename FunctorType, typename... VarTypes>
	void BindLambda(FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		*this = CreateLambda(std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...);
	}

	template <typename... VarTypes>
	void BindStatic(
		std::type_identity_t<InRetValType (*)(ParamTypes..., std::decay_t<VarTypes>...)> InFunc, VarTypes&&... Vars)
	{
		*this = CreateStatic(InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	void BindRaw(UserClass* InUserObject, TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		*this = CreateRaw(InUserObject, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	void BindRaw(const UserClass* InUserObject, TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		*this = CreateRaw(InUserObject, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, ESPMode Mode, typename... VarTypes>
	void BindSP(const TSharedRef<UserClass, Mode>& InUserObjectRef, TMethodPtr<false, UserClass, VarTypes...> InFunc,
		VarTypes&&... Vars)
	{
		*this = CreateSP(InUserObjectRef, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, ESPMode Mode, typename... VarTypes>
	void BindSP(const TSharedRef<UserClass, Mode>& InUserObjectRef, TMethodPtr<true, UserClass, VarTypes...> InFunc,
		VarTypes&&... Vars)
	{
		*this = CreateSP(InUserObjectRef, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	void BindSP(UserClass* InUserObject, TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		*this = CreateSP(InUserObject, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	void BindSP(const UserClass* InUserObject, TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		*this = CreateSP(InUserObject, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, ESPMode Mode, typename FunctorType, typename... VarTypes>
	void BindSPLambda(const TSharedRef<UserClass, Mode>& InUserObjectRef, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		*this = CreateSPLambda(InUserObjectRef, std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename FunctorType, typename... VarTypes>
	void BindSPLambda(UserClass* InUserObject, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		*this = CreateSPLambda(InUserObject, std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	void BindUObject(UserClass* InUserObject, TMethodPtr<false, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		*this = CreateUObject(InUserObject, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename... VarTypes>
	void BindUObject(const UserClass* InUserObject, TMethodPtr<true, UserClass, VarTypes...> InFunc, VarTypes&&... Vars)
	{
		*this = CreateUObject(InUserObject, InFunc, std::forward<VarTypes>(Vars)...);
	}

	template <typename UserClass, typename FunctorType, typename... VarTypes>
	void BindWeakLambda(UserClass* InUserObject, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		*this = CreateWeakLambda(InUserObject, std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...);
	}

	/** True if the delegate has a binding whose object is still alive. */
	bool IsBound() const { return Instance && Instance->IsSafeToExecute(); }

	/** True if the delegate is bound to, or owned by, this object. */
	bool IsBoundToObject(const void* InUserObject) const
	{
		return InUserObject && Instance && Instance->HasSameObject(InUserObject);
	}

	/** The UObject the delegate is bound to, or null. */
	UObject* GetUObject() const { return Instance ? Instance->GetUObject() : nullptr; }

	/** Removes the binding. */
	void Unbind() { Instance.reset(); }

	/** The handle of the current binding; invalid when unbound. */
	FDelegateHandle GetHandle() const { return Instance ? Instance->GetHandle() : FDelegateHandle(); }

	/** The binding itself, or null when unbound. */
	IDelegateInstance* GetDelegateInstanceProtected() const { return Instance.get(); }

	/** Calls the binding. The delegate must be bound (see IsBound); calling an unbound delegate is fatal. */
	RetValType Execute(ParamTypes... Params) const
	{
		// A local reference keeps the binding alive even if the call rebinds or unbinds this delegate.
		const std::shared_ptr<InstanceType> LocalInstance = Instance;
		checkf(LocalInstance && LocalInstance->IsSafeToExecute(),
			TEXT("Execute was called on a delegate that is not bound."));
		return LocalInstance->Execute(std::forward<ParamTypes>(Params)...);
	}

	/** Calls the binding if the delegate is bound; returns whether it did. Only for delegates returning void. */
	bool ExecuteIfBound(ParamTypes... Params) const requires std::is_void_v<InRetValType>
	{
		const std::shared_ptr<InstanceType> LocalInstance = Instance;
		if (LocalInstance && LocalInstance->IsSafeToExecute())
		{
			LocalInstance->Execute(std::forward<ParamTypes>(Params)...);
			return true;
		}
		return false;
	}

private:
	template <typename BindingType, typename... VarTypes>
	static TDelegate MakeBound(BindingType&& Binding, VarTypes&&... Vars)
	{
		using FInstance =
			UE::Delegates::Private::TDelegateInstance<FuncType, std::decay_t<BindingType>, std::decay_t<VarTypes>...>;
		TDelegate Result;
		Result.Instance =
			std::make_shared<FInstance>(std::forward<BindingType>(Binding), std::forward<VarTypes>(Vars)...);
		return Result;
	}

	std::shared_ptr<InstanceType> Instance;
};

/**
 * A multicast delegate: any number of bindings, all called by Broadcast. Bindings added during a
 * Broadcast are first called by the next one; bindings removed during a Broadcast are not called
 * by it any more. The order in which bindings are called is unspecified.
 */
template <typename... ParamTypes, typename UserPolicy>
class TMulticastDelegate<void(ParamTypes...), UserPolicy>
{
public:
	/** The single-cast delegate type this multicast delegate holds. */
	using FDelegate = TDelegate<void(ParamTypes...), UserPolicy>;

	TMulticastDelegate() = default;
	TMulticastDelegate(const TMulticastDelegate& Other)
		: InvocationList(Other.InvocationList)
	{
	}

	TMulticastDelegate& operator=(const TMulticastDelegate& Other)
	{
		if (this != &Other)
		{
			checkf(
				InvocationListLockCount == 0, TEXT("A multicast delegate cannot be assigned to while it broadcasts."));
			InvocationList = Other.InvocationList;
		}
		return *this;
	}

	/** Adds a copy of a delegate; returns its handle, or an invalid handle if the delegate is unbound. */
	FDelegateHandle Add(const FDelegate& InNewDelegate) { return AddDelegate(FDelegate(InNewDelegate)); }

	FDelegateHandle Add(FDelegate&& InNewDelegate) { return AddDelegate(std::move(InNewDelegate)); }

	template <typename FunctorType, typename... VarTypes>
	FDelegateHandle AddLambda(FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		return AddDelegate(
			FDelegate::CreateLambda(std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...));
	}

	template <typename... VarTypes>
	FDelegateHandle AddStatic(
		std::type_identity_t<void (*)(ParamTypes..., std::decay_t<VarTypes>...)> InFunc, VarTypes&&... Vars)
	{
		return AddDelegate(FDelegate::CreateStatic(InFunc, std::forward<VarTypes>(Vars)...));
	}

	template <typename UserClass, typename FuncPtrType, typename... VarTypes>
	FDelegateHandle AddRaw(UserClass* InUserObject, FuncPtrType InFunc, VarTypes&&... Vars)
	{
		return AddDelegate(FDelegate::CreateRaw(InUserObject, InFunc, std::forward<VarTypes>(Vars)...));
	}

	template <typename UserClass, typename FuncPtrType, typename... VarTypes>
	FDelegateHandle AddSP(UserClass&& InUserObject, FuncPtrType InFunc, VarTypes&&... Vars)
	{
		return AddDelegate(
			FDelegate::CreateSP(std::forward<UserClass>(InUserObject), InFunc, std::forward<VarTypes>(Vars)...));
	}

	template <typename UserClass, typename FunctorType, typename... VarTypes>
	FDelegateHandle AddSPLambda(UserClass&& InUserObject, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		return AddDelegate(FDelegate::CreateSPLambda(std::forward<UserClass>(InUserObject),
			std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...));
	}

	template <typename UserClass, typename FuncPtrType, typename... VarTypes>
	FDelegateHandle AddUObject(UserClass* InUserObject, FuncPtrType InFunc, VarTypes&&... Vars)
	{
		return AddDelegate(FDelegate::CreateUObject(InUserObject, InFunc, std::forward<VarTypes>(Vars)...));
	}

	template <typename UserClass, typename FunctorType, typename... VarTypes>
	FDelegateHandle AddWeakLambda(UserClass* InUserObject, FunctorType&& InFunctor, VarTypes&&... Vars)
	{
		return AddDelegate(FDelegate::CreateWeakLambda(
			InUserObject, std::forward<FunctorType>(InFunctor), std::forward<VarTypes>(Vars)...));
	}

	/** Removes the binding with this handle; returns whether one was found. */
	bool Remove(FDelegateHandle Handle)
	{
		if (!Handle.IsValid())
		{
			return false;
		}
		for (size_t Index = 0; Index < InvocationList.size(); ++Index)
		{
			if (InvocationList[Index].GetHandle() == Handle)
			{
				RemoveAtIndex(Index);
				return true;
			}
		}
		return false;
	}

	/** Removes every binding bound to, or owned by, the object; returns how many were removed. */
	int32 RemoveAll(const void* InUserObject)
	{
		int32 NumRemoved = 0;
		for (size_t Index = InvocationList.size(); Index-- > 0;)
		{
			if (InvocationList[Index].IsBoundToObject(InUserObject))
			{
				RemoveAtIndex(Index);
				++NumRemoved;
			}
		}
		return NumRemoved;
	}

	/** Removes every binding. */
	void Clear()
	{
		for (size_t Index = InvocationList.size(); Index-- > 0;)
		{
			RemoveAtIndex(Index);
		}
	}

	/** True if at least one binding can still be called. */
	bool IsBound() const
	{
		for (const FDelegate& Delegate : InvocationList)
		{
			if (Delegate.IsBound())
			{
				return true;
			}
		}
		return false;
	}

	/** True if at least one binding is bound to, or owned by, the object. */
	bool IsBoundToObject(const void* InUserObject) const
	{
		for (const FDelegate& Delegate : InvocationList)
		{
			if (Delegate.IsBoundToObject(InUserObject))
			{
				return true;
			}
		}
		return false;
	}

	/** Calls every binding whose object is still alive. */
	void Broadcast(ParamTypes... Params) const
	{
		++InvocationListLockCount;
		// Walking backwards over the entries present at the start leaves out those added by the calls.
		for (size_t Index = InvocationList.size(); Index-- > 0;)
		{
			// A local reference keeps the binding alive even if the call removes it from the list.
			const std::shared_ptr<typename FDelegate::InstanceType> LocalInstance = InvocationList[Index].Instance;
			if (LocalInstance && LocalInstance->IsSafeToExecute())
			{
				LocalInstance->Execute(Params...);
			}
		}
		--InvocationListLockCount;
		if (InvocationListLockCount == 0)
		{
			Compact();
		}
	}

private:
	FDelegateHandle AddDelegate(FDelegate&& NewDelegate)
	{
		if (!NewDelegate.IsBound())
		{
			return FDelegateHandle();
		}
		if (InvocationListLockCount == 0)
		{
			Compact();
		}
		const FDelegateHandle Handle = NewDelegate.GetHandle();
		InvocationList.push_back(std::move(NewDelegate));
		return Handle;
	}

	void RemoveAtIndex(size_t Index) const
	{
		if (InvocationListLockCount > 0)
		{
			// The list is being walked: clear the entry in place and drop it after the walk.
			InvocationList[Index].Unbind();
		}
		else
		{
			InvocationList.erase(InvocationList.begin() + Index);
		}
	}

	/** Drops entries that were removed during a broadcast or whose object is gone. */
	void Compact() const
	{
		std::erase_if(InvocationList,
			[](const FDelegate& Delegate)
			{
				return !Delegate.Instance || Delegate.Instance->IsCompactable();
			});
	}

	mutable std::vector<FDelegate> InvocationList;
	mutable int32 InvocationListLockCount = 0;
};

/** A delegate taking no parameters and returning nothing. */
typedef TDelegate<void()> FSimpleDelegate;

/** A multicast delegate taking no parameters. */
typedef TMulticastDelegate<void()> FSimpleMulticastDelegate;

#include "Delegates/DelegateCombinations.h"

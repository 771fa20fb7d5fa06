// Copyright Orvane. All Rights Reserved.

#pragma once

#include "Containers/UnrealString.h"
#include "CoreTypes.h"
#include "Delegates/IDelegateInstance.h"
#include "Misc/AssertionMacros.h"
#include "Templates/SharedPointer.h"
#include "UObject/WeakObjectPtrTemplatesFwd.h"

#include <functional>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

class UObject;

namespace UE::Delegates::Private
{
	/** The member function pointer type of Class with the signature FuncType, const or not. */
	template <bool bConst, typename Class, typename FuncType>
	struct TMemFunPtrType;

	template <typename Class, typename RetType, typename... ArgTypes>
	struct TMemFunPtrType<false, Class, RetType(ArgTypes...)>
	{
		typedef RetType (Class::*Type)(ArgTypes...);
	};

	template <typename Class, typename RetType, typename... ArgTypes>
	struct TMemFunPtrType<true, Class, RetType(ArgTypes...)>
	{
		typedef RetType (Class::*Type)(ArgTypes...) const;
	};

	// A binding says what a delegate calls and whether it still may: Call runs it, IsSafeToExecute
	// tells whether the object it depends on is alive, GetUserObject names that object.

	/** Calls a lambda, functor or free function. */
	template <typename FunctorType>
	struct TFunctorBinding
	{
		mutable FunctorType Functor;

		bool IsSafeToExecute() const { return true; }

		const void* GetUserObject() const { return nullptr; }

		UObject* GetUObject() const { return nullptr; }

		template <typename... ArgTypes>
		decltype(auto) Call(ArgTypes&&... Args) const
		{
			return std::invoke(Functor, std::forward<ArgTypes>(Args)...);
		}
	};

	/** Calls a method on a plain pointer; the caller keeps the object alive. */
	template <typename UserClass, typename MethodPtrType>
	struct TRawMethodBinding
	{
		UserClass* UserObject;
		MethodPtrType Method;

		bool IsSafeToExecute() const { return true; }

		const void* GetUserObject() const { return UserObject; }

		UObject* GetUObject() const { return nullptr; }

		template <typename... ArgTypes>
		decltype(auto) Call(ArgTypes&&... Args) const
		{
			return (UserObject->*Method)(std::forward<ArgTypes>(Args)...);
		}
	};

	/** Calls a method on a shared object through a weak pointer; expires with the object. */
	template <typename UserClass, ESPMode Mode, typename MethodPtrType>
	struct TSPMethodBinding
	{
		TWeakPtr<UserClass, Mode> UserObject;
		const void* RawUserObject;
		MethodPtrType Method;

		bool IsSafeToExecute() const { return UserObject.IsValid(); }

		const void* GetUserObject() const { return RawUserObject; }

		UObject* GetUObject() const { return nullptr; }

		template <typename... ArgTypes>
		decltype(auto) Call(ArgTypes&&... Args) const
		{
			// The pinned pointer keeps the object alive for the length of the call.
			const TSharedPtr<UserClass, Mode> Pinned = UserObject.Pin();
			checkf(Pinned.IsValid(),
				TEXT("A delegate bound to a shared object was executed after the object was destroyed."));
			return (Pinned.Get()->*Method)(std::forward<ArgTypes>(Args)...);
		}
	};

	/** Calls a lambda while a shared owner is alive; expires with the owner. */
	template <typename UserClass, ESPMode Mode, typename FunctorType>
	struct TSPLambdaBinding
	{
		TWeakPtr<UserClass, Mode> Owner;
		const void* RawOwner;
		mutable FunctorType Functor;

		bool IsSafeToExecute() const { return Owner.IsValid(); }

		const void* GetUserObject() const { return RawOwner; }

		UObject* GetUObject() const { return nullptr; }

		template <typename... ArgTypes>
		decltype(auto) Call(ArgTypes&&... Args) const
		{
			const TSharedPtr<UserClass, Mode> Pinned = Owner.Pin();
			checkf(Pinned.IsValid(),
				TEXT("A delegate owned by a shared object was executed after the object was destroyed."));
			return std::invoke(Functor, std::forward<ArgTypes>(Args)...);
		}
	};

	/** Calls a method on a UObject through a weak object pointer; expires with the object. */
	template <typename UserClass, typename MethodPtrType>
	struct TUObjectMethodBinding
	{
		TWeakObjectPtr<UserClass> UserObject;
		MethodPtrType Method;

		bool IsSafeToExecute() const { return UserObject.Get() != nullptr; }

		const void* GetUserObject() const { return UserObject.Get(); }

		UObject* GetUObject() const { return const_cast<UObject*>(static_cast<const UObject*>(UserObject.Get())); }

		template <typename... ArgTypes>
		decltype(auto) Call(ArgTypes&&... Args) const
		{
			UserClass* Object = UserObject.Get();
			checkf(Object, TEXT("A delegate bound to a UObject was executed after the object was destroyed."));
			return (Object->*Method)(std::forward<ArgTypes>(Args)...);
		}
	};

	/** Calls a lambda while a UObject owner is alive; expires with the owner. */
	template <typename UserClass, typename FunctorType>
	struct TWeakLambdaBinding
	{
		TWeakObjectPtr<UserClass> Owner;
		mutable FunctorType Functor;

		bool IsSafeToExecute() const { return Owner.Get() != nullptr; }

		const void* GetUserObject() const { return Owner.Get(); }

		UObject* GetUObject() const { return const_cast<UObject*>(static_cast<const UObject*>(Owner.Get())); }

		template <typename... ArgTypes>
		decltype(auto) Call(ArgTypes&&... Args) const
		{
			checkf(Owner.Get(), TEXT("A delegate owned by a UObject was executed after the object was destroyed."));
			return std::invoke(Functor, std::forward<ArgTypes>(Args)...);
		}
	};

	/** A binding of a delegate with a given signature. */
	template <typename FuncType>
	class IBaseDelegateInstance;

	template <typename RetValType, typename... ParamTypes>
	class IBaseDelegateInstance<RetValType(ParamTypes...)> : public IDelegateInstance
	{
	public:
		/** Calls the binding; the caller has checked IsSafeToExecute. */
		virtual RetValType Execute(ParamTypes... Params) const = 0;

		/** A copy of the binding, with the same handle. */
		virtual std::shared_ptr<IBaseDelegateInstance> Clone() const = 0;
	};

	/** A binding plus its payload: values stored at bind time and appended to every call's arguments. */
	template <typename FuncType, typename BindingType, typename... VarTypes>
	class TDelegateInstance;

	template <typename RetValType, typename... ParamTypes, typename BindingType, typename... VarTypes>
	class TDelegateInstance<RetValType(ParamTypes...), BindingType, VarTypes...> final
		: public IBaseDelegateInstance<RetValType(ParamTypes...)>
	{
	public:
		template <typename InBindingType, typename... InVarTypes>
		explicit TDelegateInstance(InBindingType&& InBinding, InVarTypes&&... Vars)
			: Binding(std::forward<InBindingType>(InBinding))
			, Payload(std::forward<InVarTypes>(Vars)...)
			, Handle(FDelegateHandle::GenerateNewHandle)
		{
		}

		RetValType Execute(ParamTypes... Params) const override
		{
			return std::apply(
				[this, &Params...](const VarTypes&... Vars) -> RetValType
				{
					return Binding.Call(std::forward<ParamTypes>(Params)..., Vars...);
				},
				Payload);
		}

		std::shared_ptr<IBaseDelegateInstance<RetValType(ParamTypes...)>> Clone() const override
		{
			return std::make_shared<TDelegateInstance>(*this);
		}

		FDelegateHandle GetHandle() const override { return Handle; }

		bool IsSafeToExecute() const override { return Binding.IsSafeToExecute(); }

		bool HasSameObject(const void* InUserObject) const override
		{
			return InUserObject != nullptr && Binding.GetUserObject() == InUserObject;
		}

		UObject* GetUObject() const override { return Binding.GetUObject(); }

		const void* GetObjectForTimerManager() const override { return Binding.GetUserObject(); }

	private:
		BindingType Binding;
		std::tuple<VarTypes...> Payload;
		FDelegateHandle Handle;
	};
} // namespace UE::Delegates::Private

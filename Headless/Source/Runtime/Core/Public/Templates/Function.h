// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/AssertionMacros.h"
#include "Templates/Invoke.h"
#include "Templates/UnrealTemplate.h"

#include <type_traits>
#include <utility>

template <typename FuncType>
class TFunction;
template <typename FuncType>
class TUniqueFunction;
template <typename FuncType>
class TFunctionRef;

namespace UE::Core::Private::Function
{
	/** Calling a function object that holds nothing is a programming error. */
	[[noreturn]] inline void OnUnboundCall()
	{
		FDebug::AssertFailed("IsSet()", __FILE__, __LINE__, TEXT("Attempting to call an unbound TFunction!"));
	}

	/** Type-erased owned callable. Copying is only reachable from TFunction, which requires copyable callables. */
	template <typename Ret, typename... ParamTypes>
	struct ICallable
	{
		virtual ~ICallable() = default;
		virtual Ret Call(ParamTypes... Params) = 0;
		virtual ICallable* Clone() const = 0;
	};

	template <typename FunctorType, typename Ret, typename... ParamTypes>
	struct TCallable final : ICallable<Ret, ParamTypes...>
	{
		template <typename ArgType>
		explicit TCallable(ArgType&& InFunctor)
			: Functor(std::forward<ArgType>(InFunctor))
		{
		}

		Ret Call(ParamTypes... Params) override
		{
			if constexpr (std::is_void_v<Ret>)
			{
				::Invoke(Functor, std::forward<ParamTypes>(Params)...);
			}
			else
			{
				return ::Invoke(Functor, std::forward<ParamTypes>(Params)...);
			}
		}

		ICallable<Ret, ParamTypes...>* Clone() const override
		{
			if constexpr (std::is_copy_constructible_v<FunctorType>)
			{
				return new TCallable(Functor);
			}
			else
			{
				checkNoEntry();
				return nullptr;
			}
		}

		FunctorType Functor;
	};

	template <typename T>
	inline constexpr bool TIsFunctionWrapper = false;
	template <typename F>
	inline constexpr bool TIsFunctionWrapper<TFunction<F>> = true;
	template <typename F>
	inline constexpr bool TIsFunctionWrapper<TUniqueFunction<F>> = true;
	template <typename F>
	inline constexpr bool TIsFunctionWrapper<TFunctionRef<F>> = true;

	/** Null function pointers and empty wrappers bind as "unset". */
	template <typename FunctorType>
	bool IsBound(const FunctorType& Functor)
	{
		if constexpr (std::is_pointer_v<FunctorType> || std::is_member_pointer_v<FunctorType>)
		{
			return Functor != nullptr;
		}
		else if constexpr (TIsFunctionWrapper<FunctorType>)
		{
			return Functor.IsSet();
		}
		else
		{
			return true;
		}
	}

	/** Owning storage shared by TFunction and TUniqueFunction. */
	template <typename Ret, typename... ParamTypes>
	class TFunctionStorage
	{
	public:
		using CallableType = ICallable<Ret, ParamTypes...>;

		TFunctionStorage() = default;
		TFunctionStorage(TFunctionStorage&& Other) noexcept
			: Callable(Other.Callable)
		{
			Other.Callable = nullptr;
		}
		TFunctionStorage& operator=(TFunctionStorage&& Other) noexcept
		{
			if (this != &Other)
			{
				Reset();
				Callable = Other.Callable;
				Other.Callable = nullptr;
			}
			return *this;
		}
		TFunctionStorage(const TFunctionStorage&) = delete;
		TFunctionStorage& operator=(const TFunctionStorage&) = delete;
		~TFunctionStorage() { Reset(); }

		template <typename FunctorType>
		void Bind(FunctorType&& Functor)
		{
			using DecayedType = std::decay_t<FunctorType>;
			if (IsBound(Functor))
			{
				Callable = new TCallable<DecayedType, Ret, ParamTypes...>(std::forward<FunctorType>(Functor));
			}
		}

		void CopyFrom(const TFunctionStorage& Other)
		{
			if (this != &Other)
			{
				CallableType* NewCallable = Other.Callable ? Other.Callable->Clone() : nullptr;
				Reset();
				Callable = NewCallable;
			}
		}

		void Reset()
		{
			delete Callable;
			Callable = nullptr;
		}

		bool IsSet() const { return Callable != nullptr; }

		Ret Call(ParamTypes... Params) const
		{
			if (UNLIKELY(Callable == nullptr))
			{
				OnUnboundCall();
			}
			return Callable->Call(std::forward<ParamTypes>(Params)...);
		}

	private:
		CallableType* Callable = nullptr;
	};

	template <typename FunctorType, typename Ret, typename... ParamTypes>
	inline constexpr bool TIsCompatibleFunctor = std::is_invocable_r_v<Ret, std::decay_t<FunctorType>&, ParamTypes...>;
} // namespace UE::Core::Private::Function

/** A copyable owner of any callable with a compatible signature. Calling an unset TFunction is a check failure. */
template <typename Ret, typename... ParamTypes>
class TFunction<Ret(ParamTypes...)>
{
	using StorageType = UE::Core::Private::Function::TFunctionStorage<Ret, ParamTypes...>;

public:
	TFunction(std::nullptr_t = nullptr) {}

	template <typename FunctorType>
	requires(!std::is_same_v<std::decay_t<FunctorType>, TFunction> &&
			 !std::is_same_v<std::decay_t<FunctorType>, std::nullptr_t> &&
			 UE::Core::Private::Function::TIsCompatibleFunctor<FunctorType, Ret, ParamTypes...>)
		TFunction(FunctorType&& InFunc)
	{
		static_assert(std::is_copy_constructible_v<std::decay_t<FunctorType>>,
			"TFunction cannot be constructed from a move-only callable; use TUniqueFunction.");
		Storage.Bind(std::forward<FunctorType>(InFunc));
	}

	TFunction(const TFunction& Other) { Storage.CopyFrom(Other.Storage); }
	TFunction(TFunction&&) = default;
	TFunction& operator=(const TFunction& Other)
	{
		Storage.CopyFrom(Other.Storage);
		return *this;
	}
	TFunction& operator=(TFunction&&) = default;
	TFunction& operator=(std::nullptr_t)
	{
		Storage.Reset();
		return *this;
	}

	Ret operator()(ParamTypes... Params) const { return Storage.Call(std::forward<ParamTypes>(Params)...); }

	bool IsSet() const { return Storage.IsSet(); }
	explicit operator bool() const { return Storage.IsSet(); }
	void Reset() { Storage.Reset(); }

	friend bool operator==(const TFunction& Func, std::nullptr_t) { return !Func.IsSet(); }

private:
	StorageType Storage;
};

/** A move-only owner of any callable with a compatible signature, including move-only ones. */
template <typename Ret, typename... ParamTypes>
class TUniqueFunction<Ret(ParamTypes...)>
{
	using StorageType = UE::Core::Private::Function::TFunctionStorage<Ret, ParamTypes...>;

public:
	TUniqueFunction(std::nullptr_t = nullptr) {}

	template <typename FunctorType>
	requires(!std::is_same_v<std::decay_t<FunctorType>, TUniqueFunction> &&
			 !std::is_same_v<std::decay_t<FunctorType>, std::nullptr_t> &&
			 UE::Core::Private::Function::TIsCompatibleFunctor<FunctorType, Ret, ParamTypes...>)
		TUniqueFunction(FunctorType&& InFunc)
	{
		Storage.Bind(std::forward<FunctorType>(InFunc));
	}

	TUniqueFunction(TUniqueFunction&&) = default;
	TUniqueFunction& operator=(TUniqueFunction&&) = default;
	TUniqueFunction(const TUniqueFunction&) = delete;
	TUniqueFunction& operator=(const TUniqueFunction&) = delete;
	TUniqueFunction& operator=(std::nullptr_t)
	{
		Storage.Reset();
		return *this;
	}

	Ret operator()(ParamTypes... Params) const { return Storage.Call(std::forward<ParamTypes>(Params)...); }

	bool IsSet() const { return Storage.IsSet(); }
	explicit operator bool() const { return Storage.IsSet(); }
	void Reset() { Storage.Reset(); }

	friend bool operator==(const TUniqueFunction& Func, std::nullptr_t) { return !Func.IsSet(); }

private:
	StorageType Storage;
};

/**
 * A non-owning reference to a callable, for parameters. It is always bound, and must not outlive the
 * callable it was made from.
 */
template <typename Ret, typename... ParamTypes>
class TFunctionRef<Ret(ParamTypes...)>
{
public:
	template <typename FunctorType>
	requires(!std::is_same_v<std::decay_t<FunctorType>, TFunctionRef> &&
			 UE::Core::Private::Function::TIsCompatibleFunctor<FunctorType, Ret, ParamTypes...>)
		TFunctionRef(FunctorType&& InFunc)
	{
		using RawType = std::remove_reference_t<FunctorType>;
		if constexpr (std::is_function_v<RawType>)
		{
			// A plain function is referenced through its address, which is not an object pointer.
			Object = reinterpret_cast<void*>(&InFunc);
			Thunk = &CallFunctionThunk<RawType>;
		}
		else
		{
			// Binding to an empty wrapper or a null function pointer would defer the failure to the call.
			check(UE::Core::Private::Function::IsBound(InFunc));
			Object = const_cast<void*>(static_cast<const void*>(std::addressof(InFunc)));
			Thunk = &CallThunk<RawType>;
		}
	}

	TFunctionRef(const TFunctionRef&) = default;
	TFunctionRef& operator=(const TFunctionRef&) = delete;

	Ret operator()(ParamTypes... Params) const { return Thunk(Object, std::forward<ParamTypes>(Params)...); }

private:
	template <typename FunctorType>
	static Ret CallThunk(void* Obj, ParamTypes... Params)
	{
		if constexpr (std::is_void_v<Ret>)
		{
			::Invoke(*static_cast<FunctorType*>(Obj), std::forward<ParamTypes>(Params)...);
		}
		else
		{
			return ::Invoke(*static_cast<FunctorType*>(Obj), std::forward<ParamTypes>(Params)...);
		}
	}

	template <typename FunctionType>
	static Ret CallFunctionThunk(void* Obj, ParamTypes... Params)
	{
		return reinterpret_cast<FunctionType*>(Obj)(std::forward<ParamTypes>(Params)...);
	}

	void* Object = nullptr;
	Ret (*Thunk)(void*, ParamTypes...) = nullptr;
};

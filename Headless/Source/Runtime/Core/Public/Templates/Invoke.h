// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

#include <functional>
#include <utility>

/** Calls a callable, member function pointer or member data pointer with the given arguments. */
template <typename FuncType, typename... ArgTypes>
FORCEINLINE decltype(auto) Invoke(FuncType&& Func, ArgTypes&&... Args)
{
	return std::invoke(std::forward<FuncType>(Func), std::forward<ArgTypes>(Args)...);
}

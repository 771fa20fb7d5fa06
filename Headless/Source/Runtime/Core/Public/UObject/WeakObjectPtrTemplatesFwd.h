// Copyright Orvane. All Rights Reserved.

#pragma once

// Declarations only: the definitions live in CoreUObject. Code that merely names these types, such as
// the UObject bindings of delegates, compiles without that module until it is instantiated.

struct FWeakObjectPtr;

template <class T, class TWeakObjectPtrBase = FWeakObjectPtr>
struct TWeakObjectPtr;

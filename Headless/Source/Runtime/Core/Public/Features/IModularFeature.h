// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

/** The base of every interface a module offers to others through IModularFeatures. */
class IModularFeature
{
public:
	virtual ~IModularFeature() = default;
};

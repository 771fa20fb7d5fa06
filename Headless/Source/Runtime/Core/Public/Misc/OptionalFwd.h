// Copyright Orvane. All Rights Reserved.

#pragma once

template <typename OptionalType>
struct TOptional;

// Copyright Orvane. All Rights Reserved.

#include "Tests/ConfigTestTypes.h"

UConfigTestSettings::UConfigTestSettings()
	: bSwitch(false)
	, Level(EConfigTestLevel::Off)
{
	Slots[0] = 0;
	Slots[1] = 0;
}

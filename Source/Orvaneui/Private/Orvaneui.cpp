// Copyright Orvane. All Rights Reserved.

#include "Orvaneui.h"

#include "Modules/ModuleManager.h"

FORV_uiModule::~FORV_uiModule() = default;

void FORV_uiModule::StartupModule() {}

void FORV_uiModule::ShutdownModule() {}

IMPLEMENT_MODULE(FORV_uiModule, Orvaneui)

# Copyright Orvane. All Rights Reserved.

# The setup benchmark boots the headless editor on a copy of the sample project, with the plug-in installed.
set(BENCHMARK_EXTRA_MODULES Launch Engine UnrealEd CoreUObject Core)

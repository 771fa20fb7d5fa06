// Copyright Orvane. All Rights Reserved.

#pragma once

// Build configuration switches. The build system defines the ones it knows; the rest default here.
#ifndef UE_BUILD_DEBUG
#define UE_BUILD_DEBUG 0
#endif
#ifndef UE_BUILD_DEVELOPMENT
#define UE_BUILD_DEVELOPMENT 1
#endif
#ifndef UE_BUILD_TEST
#define UE_BUILD_TEST 0
#endif
#ifndef UE_BUILD_SHIPPING
#define UE_BUILD_SHIPPING 0
#endif
#ifndef WITH_EDITOR
#define WITH_EDITOR 1
#endif
#ifndef WITH_EDITORONLY_DATA
#define WITH_EDITORONLY_DATA 1
#endif
#ifndef WITH_ENGINE
#define WITH_ENGINE 1
#endif
#ifndef DO_CHECK
#define DO_CHECK 1
#endif
#ifndef DO_GUARD_SLOW
#define DO_GUARD_SLOW 0
#endif
#ifndef WITH_AUTOMATION_WORKER
#define WITH_AUTOMATION_WORKER 1
#endif
#ifndef WITH_AUTOMATION_TESTS
#define WITH_AUTOMATION_TESTS 1
#endif
#ifndef WITH_DEV_AUTOMATION_TESTS
#define WITH_DEV_AUTOMATION_TESTS 1
#endif
#ifndef WITH_PERF_AUTOMATION_TESTS
#define WITH_PERF_AUTOMATION_TESTS 0
#endif
#ifndef NO_LOGGING
#define NO_LOGGING 0
#endif
#ifndef IS_MONOLITHIC
#define IS_MONOLITHIC 0
#endif

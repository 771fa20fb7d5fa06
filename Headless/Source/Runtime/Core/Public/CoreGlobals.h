// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Logging/LogMacros.h"

class FConfigCacheIni;
class FOutputDeviceRedirector;
class FString;

/** The process's log; every UE_LOG message goes through it. Never null once Core is loaded. */
extern CORE_API FOutputDeviceRedirector* GLog;

/** The configuration cache; null until the configuration system is set up. */
extern CORE_API FConfigCacheIni* GConfig;

/** The names under which the editor's merged Engine, Game, Input, Editor and per-project editor settings live. */
extern CORE_API FString GEngineIni;
extern CORE_API FString GGameIni;
extern CORE_API FString GInputIni;
extern CORE_API FString GEditorIni;
extern CORE_API FString GEditorPerProjectIni;

/** True in the editor. The headless engine is an editor, so this starts true. */
extern CORE_API bool GIsEditor;

/** True while the engine loop runs. */
extern CORE_API bool GIsRunning;

/** True while an automation test runs. */
extern CORE_API bool GIsAutomationTesting;

/** Number of frames the engine loop has completed. */
extern CORE_API uint64 GFrameCounter;

/** FPlatformTime::Seconds() when Core was loaded. */
extern CORE_API double GStartTime;

/** Id of the game thread: the thread that loaded Core, unless the engine loop sets another. */
extern CORE_API uint32 GGameThreadId;

/** Whether GGameThreadId holds a real thread id. */
extern CORE_API bool GIsGameThreadIdInitialized;

/** True on the game thread (and before the game thread is known). */
CORE_API bool IsInGameThread();

/** True once something asked the engine to exit. */
CORE_API bool IsEngineExitRequested();

/** Asks the engine loop to exit after the current frame, logging the reason. */
CORE_API void RequestEngineExit(const TCHAR* ReasonString);
CORE_API void RequestEngineExit(const FString& ReasonString);

/** Forgets an exit request; used by hosts that run several sessions in one process. */
CORE_API void ResetEngineExitRequest();

CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogTemp, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogCore, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogInit, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogExit, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogModuleManager, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogOutputDevice, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogStreaming, Display, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogHAL, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogSerialization, Log, All);
CORE_API DECLARE_LOG_CATEGORY_EXTERN(LogExec, Warning, All);

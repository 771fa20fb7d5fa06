// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"

class FString;

/**
 * Facts about the running application and its clock. The engine loop advances the clock once per
 * frame: UpdateLastTime, SetDeltaTime, then SetCurrentTime. Everything here is used on the game thread.
 */
class FApp
{
public:
	/** The project's name; empty before a project is opened. */
	static CORE_API const TCHAR* GetProjectName();

	/** Sets the project's name. */
	static CORE_API void SetProjectName(const TCHAR* InProjectName);

	/** True once a project name is set. */
	static CORE_API bool HasProjectName();

	/** The application's name: the project's name, or the executable's when no project is open. */
	static CORE_API FString GetName();

	/** The engine version the build identifies itself with. */
	static CORE_API const TCHAR* GetBuildVersion();

	/** The source branch the build was made from. */
	static CORE_API const TCHAR* GetBranchName();

	/** The build configuration's name ("Development" for the headless engine). */
	static CORE_API const TCHAR* GetBuildConfigurationName();

	/** The build target type's name ("Editor" for the headless engine). */
	static CORE_API const TCHAR* GetBuildTargetTypeName();

	/** The headless engine runs as the editor, never as a game. */
	static constexpr bool IsGame() { return false; }

	/** The headless engine never renders. */
	static constexpr bool CanEverRender() { return false; }

	/** The headless engine never plays audio. */
	static constexpr bool CanEverRenderAudio() { return false; }

	/** The headless engine is built from source, not installed. */
	static constexpr bool IsEngineInstalled() { return false; }

	/** True when no user is present to answer prompts. */
	static CORE_API bool IsUnattended();

	/** Sets whether a user is present. */
	static CORE_API void SetUnattended(bool bInUnattended);

	/** True while benchmarking, where frames use a fixed time step. */
	static CORE_API bool IsBenchmarking();
	static CORE_API void SetBenchmarking(bool bVal);

	/** The application clock, in seconds: the time of the current frame. */
	static CORE_API double GetCurrentTime();
	static CORE_API void SetCurrentTime(double Seconds);

	/** The time of the previous frame. */
	static CORE_API double GetLastTime();

	/** Records the current frame's time as the previous frame's, before the clock advances. */
	static CORE_API void UpdateLastTime();

	/** Seconds between the previous frame and the current one (1/30 until the first frame). */
	static CORE_API double GetDeltaTime();
	static CORE_API void SetDeltaTime(double Seconds);

	/** Seconds the last frame spent waiting. */
	static CORE_API double GetIdleTime();
	static CORE_API void SetIdleTime(double Seconds);

	/** Seconds the last frame's wait overran. */
	static CORE_API double GetIdleTimeOvershoot();
	static CORE_API void SetIdleTimeOvershoot(double Seconds);

	/** True when every frame advances the clock by GetFixedDeltaTime() instead of the real time. */
	static CORE_API bool UseFixedTimeStep();
	static CORE_API void SetUseFixedTimeStep(bool bVal);

	/** The step of a fixed-step frame, in seconds (1/30 unless set). */
	static CORE_API double GetFixedDeltaTime();
	static CORE_API void SetFixedDeltaTime(double Seconds);
};

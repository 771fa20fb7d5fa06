// Copyright Orvane. All Rights Reserved.

#pragma once

#include "CoreTypes.h"
#include "Misc/EnumClassFlags.h"

#include <bit>

/**
 * What an automation test needs and how it is classified. A test names at least one application
 * context it may run in and exactly one filter; the test-declaring macros reject anything else at
 * compile time.
 */
enum class EAutomationTestFlags : uint32
{
	None = 0x00000000,

	/** Suitable for running within the editor. */
	EditorContext = 0x00000001,
	/** Suitable for running within the client. */
	ClientContext = 0x00000002,
	/** Suitable for running within the server. */
	ServerContext = 0x00000004,
	/** Suitable for running within a commandlet. */
	CommandletContext = 0x00000008,
	/** Suitable for running within a program that is neither the editor nor a game. */
	ProgramContext = 0x00000010,

	/** Needs a rendering device. */
	NonNullRHI = 0x00000100,
	/** Needs a session started by a user. */
	RequiresUser = 0x00000200,

	/** Never listed, whatever the filter. */
	Disabled = 0x00010000,

	CriticalPriority = 0x00100000,
	HighPriority = 0x00200000,
	MediumPriority = 0x00400000,
	LowPriority = 0x00800000,

	/** Fast (well under a second) checks run before every submission. */
	SmokeFilter = 0x01000000,
	/** Tests of the engine itself. */
	EngineFilter = 0x02000000,
	/** Tests of the product built on the engine. */
	ProductFilter = 0x04000000,
	/** Performance measurements. */
	PerfFilter = 0x08000000,
	/** Long-running stability tests. */
	StressFilter = 0x10000000,
	/** Tests that exercise failure paths on purpose. */
	NegativeFilter = 0x20000000,
};

ENUM_CLASS_FLAGS(EAutomationTestFlags)

/** Every application context flag. */
inline constexpr EAutomationTestFlags EAutomationTestFlags_ApplicationContextMask =
	EAutomationTestFlags::EditorContext | EAutomationTestFlags::ClientContext | EAutomationTestFlags::ServerContext |
	EAutomationTestFlags::CommandletContext | EAutomationTestFlags::ProgramContext;

/** Every feature requirement flag. */
inline constexpr EAutomationTestFlags EAutomationTestFlags_FeatureMask =
	EAutomationTestFlags::NonNullRHI | EAutomationTestFlags::RequiresUser;

/** Every priority flag. */
inline constexpr EAutomationTestFlags EAutomationTestFlags_PriorityMask =
	EAutomationTestFlags::CriticalPriority | EAutomationTestFlags::HighPriority | EAutomationTestFlags::MediumPriority |
	EAutomationTestFlags::LowPriority;

/** Every filter flag. */
inline constexpr EAutomationTestFlags EAutomationTestFlags_FilterMask =
	EAutomationTestFlags::SmokeFilter | EAutomationTestFlags::EngineFilter | EAutomationTestFlags::ProductFilter |
	EAutomationTestFlags::PerfFilter | EAutomationTestFlags::StressFilter | EAutomationTestFlags::NegativeFilter;

namespace UE::Automation::Private
{
	/** True if the flags name at least one application context. */
	constexpr bool HasApplicationContext(EAutomationTestFlags Flags)
	{
		return EnumHasAnyFlags(Flags, EAutomationTestFlags_ApplicationContextMask);
	}

	/** True if the flags name exactly one filter. */
	constexpr bool HasExactlyOneFilter(EAutomationTestFlags Flags)
	{
		return std::has_single_bit((uint32)(Flags & EAutomationTestFlags_FilterMask));
	}
} // namespace UE::Automation::Private

/** Checks, at compile time, the flags given to a test-declaring macro. */
#define UE_AUTOMATION_CHECK_TEST_FLAGS(TFlags)                                      \
	static_assert(UE::Automation::Private::HasApplicationContext(TFlags),           \
		"An automation test must name at least one application context flag (e.g. " \
		"EAutomationTestFlags::EditorContext).");                                   \
	static_assert(UE::Automation::Private::HasExactlyOneFilter(TFlags),             \
		"An automation test must name exactly one filter flag (e.g. EAutomationTestFlags::EngineFilter).");

/** How an expected message is compared with a log line. */
namespace EAutomationExpectedMessageFlags
{
	enum MatchType
	{
		/** The whole line must match. */
		Exact,
		/** The line must contain a match. */
		Contains,
	};
}

/** The same matching types, under the name AddExpectedError uses. */
namespace EAutomationExpectedErrorFlags = EAutomationExpectedMessageFlags;

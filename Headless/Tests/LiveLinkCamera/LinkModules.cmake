# Copyright Orvane. All Rights Reserved.
#
# The camera controller suites put cine cameras into the editor world and drive them from the LiveLink
# module's client, through the component controller of the LiveLinkComponents module.

set(TEST_EXTRA_MODULES Launch UnrealEd CinematicCamera LiveLink LiveLinkComponents LiveLinkTestSources)

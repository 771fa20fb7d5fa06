# Copyright Orvane. All Rights Reserved.
#
# The editor suites run the engine loop, and put cine cameras into the editor world.

set(TEST_EXTRA_MODULES Launch CinematicCamera)

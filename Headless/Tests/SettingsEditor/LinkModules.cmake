# Copyright Orvane. All Rights Reserved.
#
# The start-up suite runs the engine loop, which loads the settings editor with the other editor modules.

set(TEST_EXTRA_MODULES Launch)

# Copyright Orvane. All Rights Reserved.
#
# The settings suites save the engine's settings classes from three modules into one project.

set(TEST_EXTRA_MODULES DeveloperSettings EngineSettings LiveLink)

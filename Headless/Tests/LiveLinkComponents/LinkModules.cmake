#Copyright Orvane.All Rights Reserved.
#
#The controller suites run the editor 's engine loop, with the LiveLink module' s client and a test source.

set(TEST_EXTRA_MODULES Launch UnrealEd LiveLink LiveLinkTestSources)

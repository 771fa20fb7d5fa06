#Copyright Orvane.All Rights Reserved.
#
#The Live Link suites use the interface module's types, a test source with its factory, and the engine loop to
#run frames.

set(TEST_EXTRA_MODULES LiveLinkInterface LiveLinkTestSources Launch)

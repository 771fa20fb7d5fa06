# Copyright Orvane. All Rights Reserved.
#
# The registry suites list Blueprint assets, which the Engine module makes.

set(TEST_EXTRA_MODULES Engine)

# Copyright Orvane. All Rights Reserved.
#
# The payload suite compares decoded CBOR with the same sample read as Json.
set(TEST_EXTRA_MODULES Json)

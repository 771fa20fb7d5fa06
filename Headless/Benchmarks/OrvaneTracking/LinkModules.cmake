# Copyright Orvane. All Rights Reserved.

# The source benchmark runs the tracking source against the real Live Link client over real sockets.
set(BENCHMARK_EXTRA_MODULES LiveLink LiveLinkInterface Networking Sockets)

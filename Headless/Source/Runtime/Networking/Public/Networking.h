// Copyright Orvane. All Rights Reserved.

#pragma once

// Everything the Networking module offers, in one include.

#include "Common/UdpSocketBuilder.h"
#include "CoreMinimal.h"
#include "IPAddress.h"
#include "Interfaces/IPv4/IPv4Address.h"
#include "Interfaces/IPv4/IPv4Endpoint.h"
#include "SocketSubsystem.h"
#include "Sockets.h"

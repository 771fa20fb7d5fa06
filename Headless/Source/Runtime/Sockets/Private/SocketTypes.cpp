// Copyright Orvane. All Rights Reserved.

#include "SocketTypes.h"

const FName NAME_DGram(TEXT("DGram"));
const FName NAME_Stream(TEXT("Stream"));

const FName FNetworkProtocolTypes::IPv4(TEXT("IPv4"));
const FName FNetworkProtocolTypes::IPv6(TEXT("IPv6"));

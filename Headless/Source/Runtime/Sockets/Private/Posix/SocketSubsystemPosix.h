// Copyright Orvane. All Rights Reserved.

#pragma once

#include "SocketSubsystem.h"

/** The platform's socket subsystem: IPv4 sockets over the operating system's POSIX socket calls. */
class FSocketSubsystemPosix final : public ISocketSubsystem
{
public:
	virtual bool Init(FString& Error) override;
	virtual void Shutdown() override;
	using ISocketSubsystem::CreateSocket;
	virtual FSocket* CreateSocket(
		const FName& SocketType, const FString& SocketDescription, const FName& ProtocolName) override;
	virtual void DestroySocket(FSocket* Socket) override;
	virtual ESocketErrors GetHostByName(const ANSICHAR* HostName, FInternetAddr& OutAddr) override;
	virtual TSharedPtr<FInternetAddr> GetAddressFromString(const FString& InAddress) override;
	virtual bool RequiresChatDataBeSeparate() override { return false; }
	virtual bool RequiresEncryptedPackets() override { return false; }
	virtual bool GetHostName(FString& HostName) override;
	using ISocketSubsystem::CreateInternetAddr;
	virtual TSharedRef<FInternetAddr> CreateInternetAddr() override;
	virtual bool HasNetworkDevice() override;
	virtual const TCHAR* GetSocketAPIName() const override;
	virtual ESocketErrors GetLastErrorCode() override;
	virtual ESocketErrors TranslateErrorCode(int32 Code) override;
	virtual TSharedRef<FInternetAddr> GetLocalHostAddr(FOutputDevice& Out, bool& bCanBindAll) override;
	virtual bool IsSocketWaitSupported() const override { return true; }
};

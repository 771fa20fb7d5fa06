// Copyright Orvane. All Rights Reserved.

#pragma once

#include "IPAddress.h"

#include <netinet/in.h>

/** An IPv4 address and port kept as the operating system's sockaddr_in. */
class FInternetAddrPosix final : public FInternetAddr
{
public:
	FInternetAddrPosix();
	explicit FInternetAddrPosix(const sockaddr_in& InAddr);

	/** The address as the operating system takes it. */
	const sockaddr_in& GetSockAddr() const { return Addr; }

	virtual void SetRawIp(const TArray<uint8>& RawAddr) override;
	virtual TArray<uint8> GetRawIp() const override;
	virtual void SetIp(uint32 InAddr) override;
	virtual void SetIp(const TCHAR* InAddr, bool& bIsValid) override;
	virtual void GetIp(uint32& OutAddr) const override;
	virtual void SetPort(int32 InPort) override;
	virtual int32 GetPort() const override;
	virtual void SetAnyAddress() override;
	virtual void SetBroadcastAddress() override;
	virtual void SetLoopbackAddress() override;
	virtual FString ToString(bool bAppendPort) const override;
	virtual bool operator==(const FInternetAddr& Other) const override;
	virtual uint32 GetTypeHash() const override;
	virtual bool IsValid() const override;
	virtual TSharedRef<FInternetAddr> Clone() const override;
	virtual void DumpAddrData() const override;

	/**
	 * Converts any FInternetAddr to a sockaddr_in through its public interface, so addresses made by
	 * other code work too. Returns false if the address holds no IPv4 address.
	 */
	static bool ToSockAddr(const FInternetAddr& InAddr, sockaddr_in& OutAddr);

	/** Stores a sockaddr_in in any FInternetAddr. */
	static void FromSockAddr(const sockaddr_in& InAddr, FInternetAddr& OutAddr);

private:
	sockaddr_in Addr;
};

// Copyright Orvane. All Rights Reserved.

#include "SocketSubsystem.h"

#include "Containers/Map.h"
#include "IPAddress.h"
#include "Misc/AssertionMacros.h"
#include "Posix/SocketSubsystemPosix.h"
#include "SocketSubsystemRegistry.h"
#include "Sockets.h"

#include <mutex>

DEFINE_LOG_CATEGORY(LogSockets);

namespace
{
	/**
	 * The subsystems by name. The platform's own is made on first use and lives until ShutdownAllSystems,
	 * so Get may be called from any thread (a receive thread included) without the module manager.
	 */
	struct FSocketSubsystemRegistry
	{
		std::mutex Mutex;
		TMap<FName, ISocketSubsystem*> Subsystems;
		FName DefaultName;
		TUniquePtr<FSocketSubsystemPosix> PlatformSubsystem;

		static FSocketSubsystemRegistry& Get()
		{
			// Never destroyed: sockets may be destroyed by other objects' static destructors.
			static FSocketSubsystemRegistry* const Registry = new FSocketSubsystemRegistry();
			return *Registry;
		}

		/** Makes and registers the platform subsystem if it does not exist yet. Mutex must be held. */
		void EnsurePlatformSubsystem()
		{
			if (PlatformSubsystem.IsValid())
			{
				return;
			}
			PlatformSubsystem = MakeUnique<FSocketSubsystemPosix>();
			FString Error;
			if (!PlatformSubsystem->Init(Error))
			{
				UE_LOG(LogSockets, Error, TEXT("The platform socket subsystem failed to start: %s"), *Error);
			}
			Subsystems.Add(PLATFORM_SOCKETSUBSYSTEM, PlatformSubsystem.Get());
			if (DefaultName.IsNone())
			{
				DefaultName = PLATFORM_SOCKETSUBSYSTEM;
			}
		}
	};
} // namespace

namespace SocketSubsystemRegistry
{
	ISocketSubsystem* Find(const FName& SubsystemName)
	{
		FSocketSubsystemRegistry& Registry = FSocketSubsystemRegistry::Get();
		std::lock_guard<std::mutex> Lock(Registry.Mutex);
		Registry.EnsurePlatformSubsystem();
		const FName Name = SubsystemName.IsNone() ? Registry.DefaultName : SubsystemName;
		ISocketSubsystem* const* Found = Registry.Subsystems.Find(Name);
		return Found != nullptr ? *Found : nullptr;
	}

	void Register(const FName& Name, ISocketSubsystem* Subsystem, bool bMakeDefault)
	{
		FSocketSubsystemRegistry& Registry = FSocketSubsystemRegistry::Get();
		std::lock_guard<std::mutex> Lock(Registry.Mutex);
		Registry.Subsystems.Add(Name, Subsystem);
		if (bMakeDefault || Registry.DefaultName.IsNone())
		{
			Registry.DefaultName = Name;
		}
	}

	void Unregister(const FName& Name)
	{
		FSocketSubsystemRegistry& Registry = FSocketSubsystemRegistry::Get();
		std::lock_guard<std::mutex> Lock(Registry.Mutex);
		Registry.Subsystems.Remove(Name);
		if (Registry.DefaultName == Name)
		{
			Registry.DefaultName = Registry.PlatformSubsystem.IsValid() ? FName(PLATFORM_SOCKETSUBSYSTEM) : FName();
		}
	}

	void ShutdownAll()
	{
		FSocketSubsystemRegistry& Registry = FSocketSubsystemRegistry::Get();
		std::lock_guard<std::mutex> Lock(Registry.Mutex);
		for (TPair<FName, ISocketSubsystem*>& Pair : Registry.Subsystems)
		{
			Pair.Value->Shutdown();
		}
		Registry.Subsystems.Empty();
		Registry.DefaultName = FName();
		Registry.PlatformSubsystem.Reset();
	}
} // namespace SocketSubsystemRegistry

void FSocketDeleter::operator()(FSocket* Socket) const
{
	if (Socket != nullptr && Subsystem != nullptr)
	{
		Subsystem->DestroySocket(Socket);
	}
}

ISocketSubsystem* ISocketSubsystem::Get(const FName& SubsystemName)
{
	ISocketSubsystem* Subsystem = SocketSubsystemRegistry::Find(SubsystemName);
	if (Subsystem == nullptr)
	{
		UE_LOG(LogSockets, Warning, TEXT("No socket subsystem is registered under the name '%s'."),
			*SubsystemName.ToString());
	}
	return Subsystem;
}

void ISocketSubsystem::ShutdownAllSystems()
{
	SocketSubsystemRegistry::ShutdownAll();
}

FSocket* ISocketSubsystem::CreateSocket(const FName& SocketType, const FString& SocketDescription, bool bForceUDP)
{
	// Every socket of this platform speaks UDP or TCP over IPv4 already, so bForceUDP changes nothing.
	return CreateSocket(SocketType, SocketDescription, FNetworkProtocolTypes::IPv4);
}

FUniqueSocket ISocketSubsystem::CreateUniqueSocket(
	const FName& SocketType, const FString& SocketDescription, bool bForceUDP)
{
	return FUniqueSocket(CreateSocket(SocketType, SocketDescription, bForceUDP), FSocketDeleter(this));
}

FUniqueSocket ISocketSubsystem::CreateUniqueSocket(
	const FName& SocketType, const FString& SocketDescription, const FName& ProtocolName)
{
	return FUniqueSocket(CreateSocket(SocketType, SocketDescription, ProtocolName), FSocketDeleter(this));
}

TSharedRef<FInternetAddr> ISocketSubsystem::CreateInternetAddr(const FName ProtocolType)
{
	if (!ProtocolType.IsNone() && ProtocolType != FNetworkProtocolTypes::IPv4)
	{
		// IPv6 addresses are not implemented; the IPv4 address returned keeps callers working, the
		// reported gap makes the run fail.
		UE_HEADLESS_UNIMPLEMENTED();
	}
	return CreateInternetAddr();
}

const TCHAR* ISocketSubsystem::GetSocketError(ESocketErrors Code)
{
	if (Code == SE_GET_LAST_ERROR_CODE)
	{
		Code = GetLastErrorCode();
	}
	switch (Code)
	{
		case SE_NO_ERROR:
			return TEXT("No error (SE_NO_ERROR)");
		case SE_EINTR:
			return TEXT("Interrupted system call (SE_EINTR)");
		case SE_EBADF:
			return TEXT("Bad file descriptor: the socket is closed (SE_EBADF)");
		case SE_EACCES:
			return TEXT("Permission denied (SE_EACCES)");
		case SE_EFAULT:
			return TEXT("Bad address (SE_EFAULT)");
		case SE_EINVAL:
			return TEXT("Invalid argument (SE_EINVAL)");
		case SE_EMFILE:
			return TEXT("Too many open files (SE_EMFILE)");
		case SE_EWOULDBLOCK:
			return TEXT("Operation would block (SE_EWOULDBLOCK)");
		case SE_EINPROGRESS:
			return TEXT("Operation now in progress (SE_EINPROGRESS)");
		case SE_EALREADY:
			return TEXT("Operation already in progress (SE_EALREADY)");
		case SE_ENOTSOCK:
			return TEXT("Not a socket (SE_ENOTSOCK)");
		case SE_EDESTADDRREQ:
			return TEXT("Destination address required (SE_EDESTADDRREQ)");
		case SE_EMSGSIZE:
			return TEXT("Message too long (SE_EMSGSIZE)");
		case SE_EPROTOTYPE:
			return TEXT("Protocol wrong type for socket (SE_EPROTOTYPE)");
		case SE_ENOPROTOOPT:
			return TEXT("Protocol not available (SE_ENOPROTOOPT)");
		case SE_EPROTONOSUPPORT:
			return TEXT("Protocol not supported (SE_EPROTONOSUPPORT)");
		case SE_ESOCKTNOSUPPORT:
			return TEXT("Socket type not supported (SE_ESOCKTNOSUPPORT)");
		case SE_EOPNOTSUPP:
			return TEXT("Operation not supported (SE_EOPNOTSUPP)");
		case SE_EPFNOSUPPORT:
			return TEXT("Protocol family not supported (SE_EPFNOSUPPORT)");
		case SE_EAFNOSUPPORT:
			return TEXT("Address family not supported (SE_EAFNOSUPPORT)");
		case SE_EADDRINUSE:
			return TEXT("Address already in use (SE_EADDRINUSE)");
		case SE_EADDRNOTAVAIL:
			return TEXT("Cannot assign requested address (SE_EADDRNOTAVAIL)");
		case SE_ENETDOWN:
			return TEXT("Network is down (SE_ENETDOWN)");
		case SE_ENETUNREACH:
			return TEXT("Network is unreachable (SE_ENETUNREACH)");
		case SE_ENETRESET:
			return TEXT("Network dropped connection on reset (SE_ENETRESET)");
		case SE_ECONNABORTED:
			return TEXT("Software caused connection abort (SE_ECONNABORTED)");
		case SE_ECONNRESET:
			return TEXT("Connection reset by peer (SE_ECONNRESET)");
		case SE_ENOBUFS:
			return TEXT("No buffer space available (SE_ENOBUFS)");
		case SE_EISCONN:
			return TEXT("Socket is already connected (SE_EISCONN)");
		case SE_ENOTCONN:
			return TEXT("Socket is not connected (SE_ENOTCONN)");
		case SE_ESHUTDOWN:
			return TEXT("Cannot send after socket shutdown (SE_ESHUTDOWN)");
		case SE_ETOOMANYREFS:
			return TEXT("Too many references (SE_ETOOMANYREFS)");
		case SE_ETIMEDOUT:
			return TEXT("Connection timed out (SE_ETIMEDOUT)");
		case SE_ECONNREFUSED:
			return TEXT("Connection refused (SE_ECONNREFUSED)");
		case SE_ELOOP:
			return TEXT("Too many levels of symbolic links (SE_ELOOP)");
		case SE_ENAMETOOLONG:
			return TEXT("File name too long (SE_ENAMETOOLONG)");
		case SE_EHOSTDOWN:
			return TEXT("Host is down (SE_EHOSTDOWN)");
		case SE_EHOSTUNREACH:
			return TEXT("No route to host (SE_EHOSTUNREACH)");
		case SE_ENOTEMPTY:
			return TEXT("Directory not empty (SE_ENOTEMPTY)");
		case SE_EPROCLIM:
			return TEXT("Too many processes (SE_EPROCLIM)");
		case SE_EUSERS:
			return TEXT("Too many users (SE_EUSERS)");
		case SE_EDQUOT:
			return TEXT("Disk quota exceeded (SE_EDQUOT)");
		case SE_ESTALE:
			return TEXT("Stale file handle (SE_ESTALE)");
		case SE_EREMOTE:
			return TEXT("Object is remote (SE_EREMOTE)");
		case SE_EDISCON:
			return TEXT("Graceful shutdown in progress (SE_EDISCON)");
		case SE_SYSNOTREADY:
			return TEXT("Network subsystem is unavailable (SE_SYSNOTREADY)");
		case SE_VERNOTSUPPORTED:
			return TEXT("Socket library version not supported (SE_VERNOTSUPPORTED)");
		case SE_NOTINITIALISED:
			return TEXT("Socket library not initialised (SE_NOTINITIALISED)");
		case SE_HOST_NOT_FOUND:
			return TEXT("Host not found (SE_HOST_NOT_FOUND)");
		case SE_TRY_AGAIN:
			return TEXT("Temporary failure in name resolution (SE_TRY_AGAIN)");
		case SE_NO_RECOVERY:
			return TEXT("Non-recoverable failure in name resolution (SE_NO_RECOVERY)");
		case SE_NO_DATA:
			return TEXT("The name has no address (SE_NO_DATA)");
		case SE_UDP_ERR_PORT_UNREACH:
			return TEXT("Port unreachable (SE_UDP_ERR_PORT_UNREACH)");
		case SE_ADDRFAMILY:
			return TEXT("The host has no address of the requested family (SE_ADDRFAMILY)");
		case SE_SYSTEM:
			return TEXT("System error (SE_SYSTEM)");
		case SE_NODEV:
			return TEXT("No such device (SE_NODEV)");
		case SE_GET_LAST_ERROR_CODE:
			break;
	}
	return TEXT("Unknown socket error");
}

TSharedRef<FInternetAddr> ISocketSubsystem::GetLocalBindAddr(FOutputDevice& Out)
{
	bool bCanBindAll = false;
	TSharedRef<FInternetAddr> Addr = GetLocalHostAddr(Out, bCanBindAll);
	if (bCanBindAll)
	{
		Addr->SetAnyAddress();
	}
	return Addr;
}

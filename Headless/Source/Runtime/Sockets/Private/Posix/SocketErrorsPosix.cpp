// Copyright Orvane. All Rights Reserved.

#include "Posix/SocketErrorsPosix.h"

#include <cerrno>

namespace
{
	thread_local int32 LastSocketErrno = 0;
}

namespace SocketErrorsPosix
{
	void Record(int32 ErrnoValue)
	{
		LastSocketErrno = ErrnoValue;
	}

	int32 GetRecorded()
	{
		return LastSocketErrno;
	}

	ESocketErrors Translate(int32 ErrnoValue)
	{
		switch (ErrnoValue)
		{
			case 0:
				return SE_NO_ERROR;
			case EINTR:
				return SE_EINTR;
			case EBADF:
				return SE_EBADF;
			case EACCES:
				return SE_EACCES;
			case EFAULT:
				return SE_EFAULT;
			case EINVAL:
				return SE_EINVAL;
			case EMFILE:
			case ENFILE:
				return SE_EMFILE;
			case EAGAIN:
#if EWOULDBLOCK != EAGAIN
			case EWOULDBLOCK:
#endif
				return SE_EWOULDBLOCK;
			case EINPROGRESS:
				return SE_EINPROGRESS;
			case EALREADY:
				return SE_EALREADY;
			case ENOTSOCK:
				return SE_ENOTSOCK;
			case EDESTADDRREQ:
				return SE_EDESTADDRREQ;
			case EMSGSIZE:
				return SE_EMSGSIZE;
			case EPROTOTYPE:
				return SE_EPROTOTYPE;
			case ENOPROTOOPT:
				return SE_ENOPROTOOPT;
			case EPROTONOSUPPORT:
				return SE_EPROTONOSUPPORT;
			case ESOCKTNOSUPPORT:
				return SE_ESOCKTNOSUPPORT;
			case EOPNOTSUPP:
				return SE_EOPNOTSUPP;
			case EPFNOSUPPORT:
				return SE_EPFNOSUPPORT;
			case EAFNOSUPPORT:
				return SE_EAFNOSUPPORT;
			case EADDRINUSE:
				return SE_EADDRINUSE;
			case EADDRNOTAVAIL:
				return SE_EADDRNOTAVAIL;
			case ENETDOWN:
				return SE_ENETDOWN;
			case ENETUNREACH:
				return SE_ENETUNREACH;
			case ENETRESET:
				return SE_ENETRESET;
			case ECONNABORTED:
				return SE_ECONNABORTED;
			case ECONNRESET:
			case EPIPE:
				return SE_ECONNRESET;
			case ENOBUFS:
			case ENOMEM:
				return SE_ENOBUFS;
			case EISCONN:
				return SE_EISCONN;
			case ENOTCONN:
				return SE_ENOTCONN;
			case ESHUTDOWN:
				return SE_ESHUTDOWN;
			case ETOOMANYREFS:
				return SE_ETOOMANYREFS;
			case ETIMEDOUT:
				return SE_ETIMEDOUT;
			case ECONNREFUSED:
				return SE_ECONNREFUSED;
			case ELOOP:
				return SE_ELOOP;
			case ENAMETOOLONG:
				return SE_ENAMETOOLONG;
			case EHOSTDOWN:
				return SE_EHOSTDOWN;
			case EHOSTUNREACH:
				return SE_EHOSTUNREACH;
			case ENOTEMPTY:
				return SE_ENOTEMPTY;
			case EUSERS:
				return SE_EUSERS;
			case EDQUOT:
				return SE_EDQUOT;
			case ESTALE:
				return SE_ESTALE;
			case EREMOTE:
				return SE_EREMOTE;
			case ENODEV:
				return SE_NODEV;
			default:
				return SE_SYSTEM;
		}
	}
} // namespace SocketErrorsPosix

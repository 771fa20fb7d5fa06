// Copyright Orvane. All Rights Reserved.

#pragma once

// The DECLARE_*_DELEGATE* macros name delegate types. Each one is an alias of TDelegate or
// TMulticastDelegate with the signature the macro spells out; events are multicast delegates that
// name the class owning them.

#define FUNC_DECLARE_DELEGATE(DelegateName, ReturnType, ...) typedef TDelegate<ReturnType(__VA_ARGS__)> DelegateName;
#define FUNC_DECLARE_MULTICAST_DELEGATE(MulticastDelegateName, ReturnType, ...) \
	typedef TMulticastDelegate<ReturnType(__VA_ARGS__)> MulticastDelegateName;
#define FUNC_DECLARE_EVENT(OwningType, EventName, ReturnType, ...)       \
	class EventName : public TMulticastDelegate<ReturnType(__VA_ARGS__)> \
	{                                                                    \
		friend class OwningType;                                         \
	};

#define DECLARE_DELEGATE(DelegateName) FUNC_DECLARE_DELEGATE(DelegateName, void)
#define DECLARE_DELEGATE_OneParam(DelegateName, Param1Type) FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type)
#define DECLARE_DELEGATE_TwoParams(DelegateName, Param1Type, Param2Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type)
#define DECLARE_DELEGATE_ThreeParams(DelegateName, Param1Type, Param2Type, Param3Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type)
#define DECLARE_DELEGATE_FourParams(DelegateName, Param1Type, Param2Type, Param3Type, Param4Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type)
#define DECLARE_DELEGATE_FiveParams(DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type)
#define DECLARE_DELEGATE_SixParams(                                                       \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type)
#define DECLARE_DELEGATE_SevenParams(                                                                 \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type) \
	FUNC_DECLARE_DELEGATE(                                                                            \
		DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type)
#define DECLARE_DELEGATE_EightParams(                                                                                 \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type, Param8Type)     \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, \
		Param7Type, Param8Type)
#define DECLARE_DELEGATE_NineParams(DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type,         \
	Param6Type, Param7Type, Param8Type, Param9Type)                                                                   \
	FUNC_DECLARE_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, \
		Param7Type, Param8Type, Param9Type)
#define DECLARE_DELEGATE_RetVal(ReturnValueType, DelegateName) FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType)
#define DECLARE_DELEGATE_RetVal_OneParam(ReturnValueType, DelegateName, Param1Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type)
#define DECLARE_DELEGATE_RetVal_TwoParams(ReturnValueType, DelegateName, Param1Type, Param2Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type)
#define DECLARE_DELEGATE_RetVal_ThreeParams(ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type)
#define DECLARE_DELEGATE_RetVal_FourParams(                                        \
	ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type, Param4Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type, Param4Type)
#define DECLARE_DELEGATE_RetVal_FiveParams(                                                    \
	ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type)
#define DECLARE_DELEGATE_RetVal_SixParams(                                                                 \
	ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type) \
	FUNC_DECLARE_DELEGATE(                                                                                 \
		DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type)
#define DECLARE_DELEGATE_RetVal_SevenParams(                                                                           \
	ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type) \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type,   \
		Param6Type, Param7Type)
#define DECLARE_DELEGATE_RetVal_EightParams(ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type,       \
	Param4Type, Param5Type, Param6Type, Param7Type, Param8Type)                                                      \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
		Param6Type, Param7Type, Param8Type)
#define DECLARE_DELEGATE_RetVal_NineParams(ReturnValueType, DelegateName, Param1Type, Param2Type, Param3Type,        \
	Param4Type, Param5Type, Param6Type, Param7Type, Param8Type, Param9Type)                                          \
	FUNC_DECLARE_DELEGATE(DelegateName, ReturnValueType, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
		Param6Type, Param7Type, Param8Type, Param9Type)
#define DECLARE_MULTICAST_DELEGATE(DelegateName) FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void)
#define DECLARE_MULTICAST_DELEGATE_OneParam(DelegateName, Param1Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type)
#define DECLARE_MULTICAST_DELEGATE_TwoParams(DelegateName, Param1Type, Param2Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type, Param2Type)
#define DECLARE_MULTICAST_DELEGATE_ThreeParams(DelegateName, Param1Type, Param2Type, Param3Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type)
#define DECLARE_MULTICAST_DELEGATE_FourParams(DelegateName, Param1Type, Param2Type, Param3Type, Param4Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type)
#define DECLARE_MULTICAST_DELEGATE_FiveParams(                                \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type)
#define DECLARE_MULTICAST_DELEGATE_SixParams(                                             \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(                                                      \
		DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type)
#define DECLARE_MULTICAST_DELEGATE_SevenParams(                                                       \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type) \
	FUNC_DECLARE_MULTICAST_DELEGATE(                                                                  \
		DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type)
#define DECLARE_MULTICAST_DELEGATE_EightParams(                                                                     \
	DelegateName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type, Param8Type)   \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
		Param6Type, Param7Type, Param8Type)
#define DECLARE_MULTICAST_DELEGATE_NineParams(DelegateName, Param1Type, Param2Type, Param3Type, Param4Type,         \
	Param5Type, Param6Type, Param7Type, Param8Type, Param9Type)                                                     \
	FUNC_DECLARE_MULTICAST_DELEGATE(DelegateName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
		Param6Type, Param7Type, Param8Type, Param9Type)
#define DECLARE_EVENT(OwningType, EventName) FUNC_DECLARE_EVENT(OwningType, EventName, void)
#define DECLARE_EVENT_OneParam(OwningType, EventName, Param1Type) \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type)
#define DECLARE_EVENT_TwoParams(OwningType, EventName, Param1Type, Param2Type) \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type)
#define DECLARE_EVENT_ThreeParams(OwningType, EventName, Param1Type, Param2Type, Param3Type) \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type, Param3Type)
#define DECLARE_EVENT_FourParams(OwningType, EventName, Param1Type, Param2Type, Param3Type, Param4Type) \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type, Param3Type, Param4Type)
#define DECLARE_EVENT_FiveParams(OwningType, EventName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type) \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type)
#define DECLARE_EVENT_SixParams(                                                                   \
	OwningType, EventName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type) \
	FUNC_DECLARE_EVENT(                                                                            \
		OwningType, EventName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type)
#define DECLARE_EVENT_SevenParams(                                                                              \
	OwningType, EventName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, Param6Type, Param7Type)  \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
		Param6Type, Param7Type)
#define DECLARE_EVENT_EightParams(OwningType, EventName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
	Param6Type, Param7Type, Param8Type)                                                                              \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type,      \
		Param6Type, Param7Type, Param8Type)
#define DECLARE_EVENT_NineParams(OwningType, EventName, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type, \
	Param6Type, Param7Type, Param8Type, Param9Type)                                                                 \
	FUNC_DECLARE_EVENT(OwningType, EventName, void, Param1Type, Param2Type, Param3Type, Param4Type, Param5Type,     \
		Param6Type, Param7Type, Param8Type, Param9Type)

# Copyright Orvane. All Rights Reserved.
#
# Module rules shared by the headless engine and the plug-in: one shared library per module, named
# and laid out the way the engine's modular (editor) build lays them out on Linux.

option(ORVANE_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)

find_program(ORVANE_CCACHE ccache)
if(ORVANE_CCACHE)
	set(CMAKE_CXX_COMPILER_LAUNCHER "${ORVANE_CCACHE}")
endif()

# Every binary lands in one folder, as in Engine/Binaries/Linux, so the module manager finds modules
# next to the executable.
set(UE_BINARIES_DIR "${CMAKE_BINARY_DIR}/Binaries/Linux")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${UE_BINARIES_DIR}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${UE_BINARIES_DIR}")
set(CMAKE_BUILD_RPATH "${UE_BINARIES_DIR}")
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# The engine's build defines: an editor build of the Development configuration on Linux.
add_compile_definitions(
	UE_BUILD_DEBUG=0
	UE_BUILD_DEVELOPMENT=1
	UE_BUILD_TEST=0
	UE_BUILD_SHIPPING=0
	UE_EDITOR=1
	UE_GAME=0
	UE_SERVER=0
	WITH_EDITOR=1
	WITH_EDITORONLY_DATA=1
	WITH_ENGINE=1
	WITH_PLUGIN_SUPPORT=1
	WITH_AUTOMATION_WORKER=1
	WITH_AUTOMATION_TESTS=1
	WITH_DEV_AUTOMATION_TESTS=1
	DO_CHECK=1
	IS_MONOLITHIC=0
	IS_PROGRAM=0
	PLATFORM_LINUX=1
	PLATFORM_WINDOWS=0
	PLATFORM_TCHAR_IS_CHAR16=1
	UBT_COMPILED_PLATFORM=Linux)

set(UE_WARNING_FLAGS -Wall -Wextra -Werror -Wno-unused-parameter)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
	# GCC 12 reports out-of-bounds reads at -O2 when a pointer to a non-virtual member function is
	# called through std::invoke on a small object (it checks for a vtable that cannot be there).
	list(APPEND UE_WARNING_FLAGS -Wno-array-bounds)
endif()

if(ORVANE_SANITIZE)
	add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
	add_link_options(-fsanitize=address,undefined)
endif()

# Applies the settings every module shares: export macro, module name, include folders, warnings.
function(_ue_configure_module Target ModuleDir)
	string(TOUPPER "${Target}" UpperName)
	set_target_properties(${Target} PROPERTIES
		OUTPUT_NAME "UnrealEditor-${Target}"
		CXX_VISIBILITY_PRESET hidden
		VISIBILITY_INLINES_HIDDEN OFF)
	target_compile_definitions(${Target}
		PUBLIC "${UpperName}_API=__attribute__((visibility(\"default\")))"
		PRIVATE "UE_MODULE_NAME=\"${Target}\"")
	if(EXISTS "${ModuleDir}/Public")
		target_include_directories(${Target} PUBLIC "${ModuleDir}/Public")
	endif()
	if(EXISTS "${ModuleDir}/Classes")
		target_include_directories(${Target} PUBLIC "${ModuleDir}/Classes")
	endif()
	if(EXISTS "${ModuleDir}/Private")
		target_include_directories(${Target} PRIVATE "${ModuleDir}/Private")
	endif()
	target_compile_options(${Target} PRIVATE ${UE_WARNING_FLAGS})
endfunction()

function(_ue_module_sources OutVar ModuleDir)
	file(GLOB_RECURSE Sources CONFIGURE_DEPENDS
		"${ModuleDir}/Private/*.cpp" "${ModuleDir}/Public/*.h" "${ModuleDir}/Private/*.h")
	set(${OutVar} ${Sources} PARENT_SCOPE)
endfunction()

# Reflection: the header tool reads the UCLASS/USTRUCT/UENUM declarations of a module's headers and writes
# <Header>.generated.h and <Header>.gen.cpp into the build folder. The .gen.cpp files are compiled into
# the module; the generated headers' folder is a public include folder, as the engine's is.
find_package(Python3 COMPONENTS Interpreter REQUIRED)
set(UE_HEADER_TOOL "${CMAKE_CURRENT_LIST_DIR}/../Headless/Tools/HeaderTool/HeaderTool.py")
get_filename_component(UE_HEADER_TOOL "${UE_HEADER_TOOL}" ABSOLUTE)

function(_ue_reflect_module Target ModuleDir)
	file(GLOB_RECURSE Headers CONFIGURE_DEPENDS
		"${ModuleDir}/Public/*.h" "${ModuleDir}/Classes/*.h" "${ModuleDir}/Private/*.h")
	set(OutDir "${CMAKE_BINARY_DIR}/Intermediate/Inc/${Target}/UHT")
	file(MAKE_DIRECTORY "${OutDir}")
	target_include_directories(${Target} PUBLIC "${OutDir}")

	# Only headers that declare reflected types get generated files; which ones do is decided here, and
	# the tool asks for a new configure (through the rescan stamp) when a header starts declaring some.
	set(Reflected "")
	foreach(Header IN LISTS Headers)
		file(STRINGS "${Header}" Hits REGEX "^[ \t]*(UCLASS|USTRUCT|UENUM)[ \t]*\\(")
		if(Hits)
			list(APPEND Reflected "${Header}")
		endif()
	endforeach()
	set(RescanStamp "${OutDir}/Rescan.stamp")
	if(NOT EXISTS "${RescanStamp}")
		file(WRITE "${RescanStamp}" "")
	endif()
	set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${RescanStamp}")
	list(JOIN Reflected "\n" ExpectedText)
	file(CONFIGURE OUTPUT "${OutDir}/ReflectedHeaders.txt" CONTENT "${ExpectedText}\n")
	if(NOT Reflected)
		return()
	endif()

	set(Generated "")
	set(GeneratedSources "")
	foreach(Header IN LISTS Reflected)
		get_filename_component(Base "${Header}" NAME_WE)
		list(APPEND Generated "${OutDir}/${Base}.generated.h" "${OutDir}/${Base}.gen.cpp")
		list(APPEND GeneratedSources "${OutDir}/${Base}.gen.cpp")
	endforeach()
	set(Stamp "${OutDir}/${Target}.reflection.stamp")
	add_custom_command(
		OUTPUT "${Stamp}"
		BYPRODUCTS ${Generated}
		COMMAND "${Python3_EXECUTABLE}" "${UE_HEADER_TOOL}"
			--module "${Target}" --module-dir "${ModuleDir}" --output-dir "${OutDir}"
			--repo-root "${CMAKE_SOURCE_DIR}" --expected "${OutDir}/ReflectedHeaders.txt"
			--rescan-stamp "${RescanStamp}" ${Headers}
		COMMAND "${CMAKE_COMMAND}" -E touch "${Stamp}"
		DEPENDS ${Headers} "${UE_HEADER_TOOL}"
		COMMENT "Generating reflection code for ${Target}"
		VERBATIM)
	target_sources(${Target} PRIVATE "${Stamp}" ${GeneratedSources})
endfunction()

# Declares a module of the headless engine, in the current source folder.
#   ue_engine_module(Core DEPENDS ... PRIVATE_DEPENDS ...)
function(ue_engine_module Name)
	cmake_parse_arguments(ARG "" "" "DEPENDS;PRIVATE_DEPENDS;SYSTEM_LIBS" ${ARGN})
	set(ModuleDir "${CMAKE_CURRENT_SOURCE_DIR}")
	_ue_module_sources(Sources "${ModuleDir}")
	add_library(${Name} SHARED ${Sources})
	_ue_configure_module(${Name} "${ModuleDir}")
	_ue_reflect_module(${Name} "${ModuleDir}")
	target_link_libraries(${Name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS} ${ARG_SYSTEM_LIBS})
	set_property(GLOBAL APPEND PROPERTY UE_ENGINE_MODULES ${Name})
endfunction()

# Reads one dependency list (`PublicDependencyModuleNames` or `PrivateDependencyModuleNames`) of a
# module rules file.
function(_ue_read_build_cs_list OutVar BuildCsText ListName)
	set(Modules "")
	string(REGEX MATCHALL "${ListName}[ \t\r\n]*\\.[ \t\r\n]*AddRange[ \t\r\n]*\\([^;]*;" Calls "${BuildCsText}")
	foreach(Call IN LISTS Calls)
		string(REGEX MATCHALL "\"[A-Za-z0-9_]+\"" Quoted "${Call}")
		foreach(Item IN LISTS Quoted)
			string(REPLACE "\"" "" Item "${Item}")
			list(APPEND Modules "${Item}")
		endforeach()
	endforeach()
	set(${OutVar} ${Modules} PARENT_SCOPE)
endfunction()

# Links a plug-in module against the modules its rules file names. Engine modules the headless
# engine does not provide yet are reported, not silently skipped.
function(_ue_link_build_cs_list Target Visibility Modules)
	get_property(Known GLOBAL PROPERTY UE_ENGINE_MODULES)
	get_property(PluginModules GLOBAL PROPERTY UE_PLUGIN_MODULES)
	foreach(Module IN LISTS Modules)
		if(Module IN_LIST Known OR Module IN_LIST PluginModules OR TARGET ${Module})
			target_link_libraries(${Target} ${Visibility} ${Module})
		else()
			set_property(GLOBAL APPEND PROPERTY UE_MISSING_ENGINE_MODULES "${Target} -> ${Module}")
		endif()
	endforeach()
endfunction()

# Declares a plug-in module from Source/<Name>/<Name>.Build.cs, which is the single source of truth
# for its dependencies.
function(ue_plugin_module Name)
	set(ModuleDir "${CMAKE_CURRENT_SOURCE_DIR}/${Name}")
	set(BuildCs "${ModuleDir}/${Name}.Build.cs")
	if(NOT EXISTS "${BuildCs}")
		message(FATAL_ERROR "Module ${Name} has no rules file at ${BuildCs}")
	endif()
	set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${BuildCs}")
	file(READ "${BuildCs}" BuildCsText)
	_ue_read_build_cs_list(PublicModules "${BuildCsText}" "PublicDependencyModuleNames")
	_ue_read_build_cs_list(PrivateModules "${BuildCsText}" "PrivateDependencyModuleNames")

	_ue_module_sources(Sources "${ModuleDir}")
	add_library(${Name} SHARED ${Sources})
	_ue_configure_module(${Name} "${ModuleDir}")
	_ue_reflect_module(${Name} "${ModuleDir}")
	set_property(GLOBAL APPEND PROPERTY UE_PLUGIN_MODULES ${Name})
	set_target_properties(${Name} PROPERTIES UE_PUBLIC_MODULES "${PublicModules}" UE_PRIVATE_MODULES "${PrivateModules}")
	_ue_link_build_cs_list(${Name} PUBLIC "${PublicModules}")
	_ue_link_build_cs_list(${Name} PRIVATE "${PrivateModules}")
endfunction()

function(ue_report_missing_modules)
	get_property(Missing GLOBAL PROPERTY UE_MISSING_ENGINE_MODULES)
	if(Missing)
		list(JOIN Missing ", " MissingText)
		message(STATUS "Engine modules named by rules files but not yet provided by the headless engine: ${MissingText}")
	endif()
endfunction()

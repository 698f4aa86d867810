# What a host needs of this project: one target with the library and what can stand behind its seams, and, installed, one
# root of headers and a CMake package. `find_package(TWQBClient90)` and `add_subdirectory` give the same target,
# TWQBClient90::TWQBClient90.

include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

add_library(twqb_client INTERFACE)
add_library(TWQBClient90::TWQBClient90 ALIAS twqb_client)
set_target_properties(twqb_client PROPERTIES EXPORT_NAME TWQBClient90)
get_property(layers GLOBAL PROPERTY TWQB_LAYERS)
target_link_libraries(twqb_client INTERFACE ${layers})

if(NOT TWQB_INSTALL)
  return()
endif()

set(headers ${CMAKE_INSTALL_INCLUDEDIR}/TWQBClient90)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/TWQBClient90)

foreach(layer ${layers})
  string(REGEX REPLACE "^twqb_" "" name ${layer})
  set_target_properties(${layer} PROPERTIES EXPORT_NAME ${name})
endforeach()
install(TARGETS twqb_client ${layers} EXPORT TWQBClient90Targets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${headers})
install(EXPORT TWQBClient90Targets NAMESPACE TWQBClient90:: DESTINATION ${package})

# The headers that a host includes, and those that these lean on: the bridge, what a host brings behind a seam or hears
# of a run, and what comes along to stand behind the seams.
foreach(header
    include/twqb/AccountArray.h include/twqb/CTWQBBridge.h include/twqb/enTables.h
    src/platform/Currency.h src/platform/Date.h src/platform/Decimal.h src/platform/Flagged.h src/platform/Forwarding.h
    src/platform/Platform.h src/platform/PlatformError.h src/platform/Text.h src/platform/Value.h src/platform/ado.h
    src/platform/callback.h src/platform/desk.h src/platform/machine.h src/platform/transport.h
    src/messages/NameSlots.h src/messages/Schema.h src/messages/ValueFormat.h
    src/services/Direction.h src/services/RunObserver.h
    src/quickbooks/ResponseModel.h
    adapters/sqlite/SqliteProvider.h
    adapters/companyfile/CompanyConditions.h adapters/companyfile/CompanyFile.h adapters/companyfile/CompanyOptions.h
    adapters/companyfile/CompanyTransport.h
    adapters/terminal/Console.h adapters/terminal/InterruptGuard.h adapters/terminal/ProgressLine.h
    adapters/terminal/TerminalDesk.h
    adapters/scripted/Answers.h adapters/scripted/ScriptedDesk.h
    adapters/system/Callbacks.h adapters/system/FrozenMachine.h adapters/system/FrozenOptions.h
    adapters/system/ProfileFile.h adapters/system/ProfileText.h adapters/system/SystemMachine.h
    adapters/transcript/EventValue.h adapters/transcript/Masking.h adapters/transcript/Transcript.h
    adapters/transcript/TranscriptWriter.h
    adapters/faults/FaultScript.h adapters/faults/Faults.h)
  string(REGEX REPLACE "^(src|include)/" "" plain ${header})
  cmake_path(GET plain PARENT_PATH folder)
  install(FILES ${PROJECT_SOURCE_DIR}/${header} DESTINATION ${headers}/${folder})
endforeach()

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/TWQBClient90Config.cmake.in
  ${PROJECT_BINARY_DIR}/TWQBClient90Config.cmake INSTALL_DESTINATION ${package})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/TWQBClient90ConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/TWQBClient90Config.cmake ${PROJECT_BINARY_DIR}/TWQBClient90ConfigVersion.cmake
  DESTINATION ${package})

# Folders that `cmake --install` creates:
#   lib/aibridge/       the component, the libraries that it loads, components.ini, and the sandbox host
#   lib/                the archives that a host links
#   lib/cmake/AIBridge  the CMake package
#   include/aibridge/   the headers of these archives, included as <plugin/ComponentMgr.h>
#   share/aibridge/     the interface file, for authors of agents
#   share/aibridge/translations  the catalogues of the recommendation texts
include(CMakePackageConfigHelpers)

set(AIBRIDGE_INSTALL_LIBDIR ${CMAKE_INSTALL_LIBDIR}/aibridge)
set(AIBRIDGE_INSTALL_CMAKEDIR ${CMAKE_INSTALL_LIBDIR}/cmake/AIBridge)
set(AIBRIDGE_INSTALL_DATADIR ${CMAKE_INSTALL_DATADIR}/aibridge)

install(TARGETS componentbase hostcheck EXPORT AIBridgeTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(TARGETS AIBridge EXPORT AIBridgeTargets
    LIBRARY DESTINATION ${AIBRIDGE_INSTALL_LIBDIR} RUNTIME DESTINATION ${AIBRIDGE_INSTALL_LIBDIR})
install(EXPORT AIBridgeTargets NAMESPACE AIBridge:: DESTINATION ${AIBRIDGE_INSTALL_CMAKEDIR})

foreach(header ComponentBase ComponentMgr HostAccess HostCall)
    install(FILES ${CMAKE_SOURCE_DIR}/plugin/${header}.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/aibridge/plugin)
endforeach()
install(FILES ${CMAKE_SOURCE_DIR}/hostcheck/HostCheck.h ${CMAKE_SOURCE_DIR}/hostcheck/ComponentCheck.h
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/aibridge/hostcheck)
install(FILES ${ZORNATIVE_THRIFT} DESTINATION ${AIBRIDGE_INSTALL_DATADIR})
install(FILES ${CMAKE_SOURCE_DIR}/host/components.ini DESTINATION ${AIBRIDGE_INSTALL_LIBDIR})

# A host ships these next to its program.
set(AIBRIDGE_RUNTIME_NAMES AIBridge${CMAKE_SHARED_MODULE_SUFFIX})
foreach(closed ZorLog UIUtility LLFProc)
    get_target_property(type ${closed} TYPE)
    if(type STREQUAL "SHARED_LIBRARY")
        list(APPEND AIBRIDGE_RUNTIME_NAMES ${CMAKE_SHARED_LIBRARY_PREFIX}${closed}${CMAKE_SHARED_LIBRARY_SUFFIX})
    endif()
endforeach()

configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/AIBridgeConfig.cmake.in
    ${CMAKE_BINARY_DIR}/AIBridgeConfig.cmake
    INSTALL_DESTINATION ${AIBRIDGE_INSTALL_CMAKEDIR}
    PATH_VARS AIBRIDGE_INSTALL_LIBDIR AIBRIDGE_INSTALL_DATADIR)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/AIBridgeConfigVersion.cmake
    VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/AIBridgeConfig.cmake ${CMAKE_BINARY_DIR}/AIBridgeConfigVersion.cmake
    ${CMAKE_SOURCE_DIR}/cmake/AIBridgeDeploy.cmake
    DESTINATION ${AIBRIDGE_INSTALL_CMAKEDIR})

# The sandbox host looks for the component in its own folder, so bin/ contains only a link to the host.
if(TARGET zorhost)
    install(TARGETS zorhost RUNTIME DESTINATION ${AIBRIDGE_INSTALL_LIBDIR})
    install(DIRECTORY ${CMAKE_SOURCE_DIR}/host/machines DESTINATION ${AIBRIDGE_INSTALL_LIBDIR}
        FILES_MATCHING PATTERN *.json)
    if(UNIX)
        file(RELATIVE_PATH zorhost_link /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${AIBRIDGE_INSTALL_LIBDIR}/zorhost)
        install(CODE "
            file(MAKE_DIRECTORY \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR})
            file(CREATE_LINK ${zorhost_link}
                \$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/zorhost SYMBOLIC)")
        set(desktop ${CMAKE_SOURCE_DIR}/host/desktop/io.github.aibridge.zorhost)
        install(FILES ${desktop}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
        install(FILES ${desktop}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
        install(FILES ${desktop}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
    endif()
endif()

# Everything that the installation copies, without the tests.
add_custom_target(distribution DEPENDS AIBridge componentbase hostcheck catalogues zorcall)
foreach(target zorhost manual_zorcall manual_zorhost manual_aibridge-mcp)
    if(TARGET ${target})
        add_dependencies(distribution ${target})
    endif()
endforeach()

# Where an installation puts things: Debian's places, in five components that become five packages.
#   runtime  the shared host library
#   devel    its headers and package files, and the static libraries of serial devices and of sales
#   plugin   the driver plugin
#   tools    frctl and spf-emulator with their manual pages and the example receipts
#   server   frserver with its unit and manual page, and what its configuration looks like

include(CMakePackageConfigHelpers)

install(TARGETS frhost EXPORT frhostTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT devel)
install(DIRECTORY host/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/frhost COMPONENT devel
  FILES_MATCHING PATTERN "*.h" PATTERN cp866codec.h EXCLUDE PATTERN decimals.h EXCLUDE
  PATTERN fdrequisitenames.h EXCLUDE PATTERN servicetexts.h EXCLUDE)

# The serial devices are part of what a host program links.
install(TARGETS frdevices EXPORT frhost-devicesTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT devel)
install(FILES devices/connectionerror.h devices/connectionsettings.h devices/driverplugin.h devices/lineerrors.h
  devices/lineobserver.h devices/portholders.h devices/portinfo.h devices/portlisting.h
  devices/portlock.h devices/registerconnection.h devices/serialdevicefactory.h devices/serialportdevice.h
  devices/silencewatch.h devices/streamdevice.h devices/tcpserialdevice.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/frdevices COMPONENT devel)

# So is what issues receipts and tells what has become of them.
install(TARGETS frreceipt frsale EXPORT frhost-saleTargets
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT devel)
install(DIRECTORY receipt/ sale/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/frsale COMPONENT devel
  FILES_MATCHING PATTERN "*.h" PATTERN codepoint.h EXCLUDE PATTERN fieldsieve.h EXCLUDE
  PATTERN jsonfields.h EXCLUDE PATTERN jsontext.h EXCLUDE PATTERN judgement.h EXCLUDE
  PATTERN keyboardlayout.h EXCLUDE PATTERN linesum.h EXCLUDE PATTERN positionparser.h EXCLUDE
  PATTERN parserwords.h EXCLUDE PATTERN receipttr.h EXCLUDE
  PATTERN receipttype.h EXCLUDE PATTERN requisitecodes.h EXCLUDE PATTERN rulelist.h EXCLUDE PATTERN rules.h EXCLUDE
  PATTERN errortable.h EXCLUDE PATTERN journalfault.h EXCLUDE PATTERN storedtime.h EXCLUDE
  PATTERN postgres EXCLUDE)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/frhost)
# One file of targets a component of find_package, see frhostConfig.cmake.in.
foreach(export frhost frhost-devices frhost-sale)
  install(EXPORT ${export}Targets NAMESPACE frspf:: DESTINATION ${package_dir} COMPONENT devel)
endforeach()
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/frhostConfig.cmake.in
  ${PROJECT_BINARY_DIR}/frhostConfig.cmake
  INSTALL_DESTINATION ${package_dir}
  PATH_VARS FRSPF_PLUGIN_INSTALL_DIR)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/frhostConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/frhostConfig.cmake ${PROJECT_BINARY_DIR}/frhostConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT devel)
configure_file(${PROJECT_SOURCE_DIR}/cmake/frhost.pc.in ${PROJECT_BINARY_DIR}/frhost.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/frhost.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT devel)

install(TARGETS spf LIBRARY DESTINATION ${FRSPF_PLUGIN_INSTALL_DIR} COMPONENT plugin)

# So that they start from any prefix.
set_target_properties(frctl spf-emulator PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
install(TARGETS frctl spf-emulator RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
install(TARGETS frspf-draw RUNTIME DESTINATION ${FRSPF_LIBEXEC_INSTALL_DIR} COMPONENT tools)
file(GLOB manuals CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/*.1)
list(FILTER manuals EXCLUDE REGEX "/frserver[.]1$")
if(NOT CMAKE_CROSSCOMPILING)
  set(datadir ${CMAKE_INSTALL_DATAROOTDIR})
  install(FILES ${PROJECT_BINARY_DIR}/frctl/frctl.bash DESTINATION ${datadir}/bash-completion/completions
    RENAME frctl COMPONENT tools)
  install(FILES ${PROJECT_BINARY_DIR}/frctl/frctl.zsh DESTINATION ${datadir}/zsh/vendor-completions
    RENAME _frctl COMPONENT tools)
endif()
install(FILES ${manuals} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
# Where udev looks, whatever the architecture.
install(FILES cmake/debian/60-frspf.rules DESTINATION lib/udev/rules.d COMPONENT tools)
file(GLOB receipts CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/examples/*.json ${PROJECT_SOURCE_DIR}/examples/*.txt)
install(FILES ${receipts} DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT tools)
install(DIRECTORY examples/host examples/test-suite DESTINATION ${CMAKE_INSTALL_DOCDIR}/examples COMPONENT tools)
install(DIRECTORY docs/img DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT tools)
install(FILES README.md README.ru.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT tools)
# The refusal of a purchase names the limits, they and both READMEs the guide.
install(FILES docs/host-guide.md docs/host-guide.ru.md docs/limits.md docs/output.schema.json docs/receipt.schema.json
  DESTINATION ${CMAKE_INSTALL_DOCDIR}/docs COMPONENT tools)

# A program of its own, on machines that have nothing else.
set_target_properties(frserver PROPERTIES INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
install(TARGETS frserver RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT server)
install(TARGETS frspf-draw RUNTIME DESTINATION ${FRSERVER_LIBEXEC_INSTALL_DIR} COMPONENT server)
# Where systemd looks, whatever the architecture.
install(FILES cmake/debian/frserver.service DESTINATION lib/systemd/system COMPONENT server)
install(FILES docs/frserver.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT server)
set(server_docdir ${CMAKE_INSTALL_DATAROOTDIR}/doc/frspf-server)
# As here, so that its links lead somewhere.
install(FILES docs/service.md docs/frserver.openapi.json docs/receipt.schema.json DESTINATION ${server_docdir}/docs COMPONENT server)
install(FILES docs/img/service.png DESTINATION ${server_docdir}/docs/img COMPONENT server)
install(FILES examples/frserver.ini examples/frserver.rules.yml DESTINATION ${server_docdir}/examples COMPONENT server)
install(DIRECTORY examples/clients DESTINATION ${server_docdir}/examples COMPONENT server)

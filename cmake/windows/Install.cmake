# What only Windows' prefix has: the runtime, the list of exports for compilers
# that cannot read our import library, and the terms of all that is not ours and
# yet in the programs.
install(FILES ${PXL_RUNTIME_FILES} DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
install(FILES ${PXL_LINKER_EXPORTS} DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)

set(terms ${CMAKE_INSTALL_DATADIR}/doc/pxl)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${terms} COMPONENT runtime)
foreach(package IN ITEMS gcc-mingw-w64-base mingw-w64-common libutfcpp-dev libtomlplusplus-dev
    libspdlog-dev libfmt-dev libcli11-dev nlohmann-json3-dev libstb-dev libtinyexr-dev
    libz-mingw-w64-dev)
  install(FILES /usr/share/doc/${package}/copyright DESTINATION ${terms}/others
    RENAME ${package}.txt COMPONENT runtime)
endforeach()

# The window on freedesktop systems: desktop file, metainfo, icons and man page.
install(TARGETS loadscope-app RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT window)
foreach(file IN ITEMS ${LOADSCOPE_APP_ID}.desktop ${LOADSCOPE_APP_ID}.metainfo.xml)
  configure_file(linux/${file}.in ${file} @ONLY)
endforeach()
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${LOADSCOPE_APP_ID}.desktop"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT window)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/${LOADSCOPE_APP_ID}.metainfo.xml"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/metainfo" COMPONENT window)

set(icon_folder "${CMAKE_INSTALL_DATADIR}/icons/hicolor")
install(FILES icons/${LOADSCOPE_APP_ID}.svg
  DESTINATION "${icon_folder}/scalable/apps" COMPONENT window)
install(FILES icons/${LOADSCOPE_APP_ID}-symbolic.svg
  DESTINATION "${icon_folder}/symbolic/apps" COMPONENT window)
foreach(pixels IN LISTS LOADSCOPE_ICON_SIZES)
  install(FILES "${CMAKE_CURRENT_BINARY_DIR}/icons/${pixels}.png" RENAME ${LOADSCOPE_APP_ID}.png
    DESTINATION "${icon_folder}/${pixels}x${pixels}/apps" COMPONENT window)
endforeach()

configure_file(man/loadscope-app.1.in loadscope-app.1 @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/loadscope-app.1"
  DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT window)

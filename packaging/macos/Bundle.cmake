# The window as Loadscope.app, with an icon that iconutil puts together from the same drawings. The command stays outside:
# on a disk that ignores case `loadscope` and `Loadscope` could not stand beside each other.
set(LOADSCOPE_MACOS_MINIMUM 12.0)
if(CMAKE_OSX_DEPLOYMENT_TARGET)
  set(LOADSCOPE_MACOS_MINIMUM ${CMAKE_OSX_DEPLOYMENT_TARGET})
endif()

set(iconset "${CMAKE_CURRENT_BINARY_DIR}/Loadscope.iconset")
set(icns "${CMAKE_CURRENT_BINARY_DIR}/Loadscope.icns")
set(copies)
foreach(name_and_pixels IN ITEMS 16x16=16 16x16@2x=32 32x32=32 32x32@2x=64 128x128=128 128x128@2x=256 256x256=256
                                 256x256@2x=512 512x512=512)
  string(REPLACE "=" ";" name_then_pixels "${name_and_pixels}")
  list(GET name_then_pixels 0 name)
  list(GET name_then_pixels 1 pixels)
  list(APPEND copies COMMAND "${CMAKE_COMMAND}" -E copy "${CMAKE_CURRENT_BINARY_DIR}/icons/${pixels}.png"
    "${iconset}/icon_${name}.png")
endforeach()
add_custom_command(
  OUTPUT "${icns}"
  COMMAND "${CMAKE_COMMAND}" -E make_directory "${iconset}"
  ${copies}
  COMMAND iconutil --convert icns --output "${icns}" "${iconset}"
  DEPENDS ${LOADSCOPE_ICON_PNGS}
  COMMENT "Putting the icon of the bundle together" VERBATIM)
add_custom_target(bundle-icon DEPENDS "${icns}")
add_dependencies(loadscope-app bundle-icon)
target_sources(loadscope-app PRIVATE "${icns}")
set_source_files_properties("${icns}" TARGET_DIRECTORY loadscope-app PROPERTIES
  GENERATED ON MACOSX_PACKAGE_LOCATION Resources)

# First our own values; those of the target are filled in by CMake.
configure_file(macos/Info.plist.in Info.plist.in @ONLY)
set_target_properties(loadscope-app PROPERTIES
  MACOSX_BUNDLE ON
  OUTPUT_NAME Loadscope
  MACOSX_BUNDLE_INFO_PLIST "${CMAKE_CURRENT_BINARY_DIR}/Info.plist.in"
  MACOSX_BUNDLE_BUNDLE_NAME Loadscope
  MACOSX_BUNDLE_GUI_IDENTIFIER ${LOADSCOPE_APP_ID}
  MACOSX_BUNDLE_ICON_FILE Loadscope.icns
  MACOSX_BUNDLE_SHORT_VERSION_STRING ${PROJECT_VERSION}
  MACOSX_BUNDLE_BUNDLE_VERSION ${PROJECT_VERSION})
install(TARGETS loadscope-app BUNDLE DESTINATION . COMPONENT window)

# Draws the icon in every size that desktops ask for: LOADSCOPE_ICON_PNGS, named icons/<pixels>.png.
find_package(Qt6 6.4 REQUIRED COMPONENTS Gui Svg)
add_executable(render-icon icons/RenderIcon.cpp)
loadscope_target(render-icon)
target_link_libraries(render-icon PRIVATE Qt6::Gui Qt6::Svg)
set_target_properties(render-icon PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}")

set(icon_drawing "${CMAKE_CURRENT_SOURCE_DIR}/icons/${LOADSCOPE_APP_ID}")
set(LOADSCOPE_ICON_SIZES 16 22 24 32 48 64 128 256 512)
set(LOADSCOPE_ICON_PNGS)
set(icon_arguments)
foreach(pixels IN LISTS LOADSCOPE_ICON_SIZES)
  set(drawing "${icon_drawing}.svg")
  if(pixels LESS_EQUAL 32)
    set(drawing "${icon_drawing}-small.svg")
  endif()
  set(picture "${CMAKE_CURRENT_BINARY_DIR}/icons/${pixels}.png")
  list(APPEND LOADSCOPE_ICON_PNGS "${picture}")
  list(APPEND icon_arguments "${drawing}" ${pixels} "${picture}")
endforeach()
file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/icons")
add_custom_command(
  OUTPUT ${LOADSCOPE_ICON_PNGS}
  # Under the thread sanitizer the toolkit's own threads look as if they raced: it is not instrumented.
  COMMAND "${CMAKE_COMMAND}" -E env TSAN_OPTIONS=report_bugs=0 $<TARGET_FILE:render-icon> ${icon_arguments}
  DEPENDS render-icon "${icon_drawing}.svg" "${icon_drawing}-small.svg"
  COMMENT "Drawing the application's icon" VERBATIM)
add_custom_target(application-icon ALL DEPENDS ${LOADSCOPE_ICON_PNGS})
# So that whoever builds the window alone can install it.
add_dependencies(loadscope-app application-icon)
# With the window, so that what `./run` has built can be installed.
add_dependencies(loadscope-app application-icon)

# quillon_layer(NAME [layers below it ...])
#
# Makes the library quillon_NAME of all sources in the calling folder. A layer sees only the headers of the
# layers that it names (and of those below them), so an include that points upward fails to build.
function(quillon_layer name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  add_library(quillon_${name} STATIC ${sources})
  target_include_directories(quillon_${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(quillon_${name} PRIVATE quillon_warnings)
  foreach(below IN LISTS ARGN)
    target_link_libraries(quillon_${name} PUBLIC quillon_${below})
  endforeach()
endfunction()

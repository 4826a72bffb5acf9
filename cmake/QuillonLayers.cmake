# quillon_layer(NAME [layers below it ...])
#
# Makes the library quillon_NAME of all sources in the calling folder. A layer sees only the headers of the
# layers that it names (and of those below them), so an include that points upward fails to build.
function(quillon_layer name)
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(sources)
    add_library(quillon_${name} STATIC ${sources})
    set(scope PUBLIC)
    target_link_libraries(quillon_${name} PRIVATE quillon_warnings)
  else()
    add_library(quillon_${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(quillon_${name} ${scope} ${CMAKE_CURRENT_SOURCE_DIR})
  # The target all_verify_interface_header_sets compiles each header alone, with what its layer may see and no more.
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.h)
  target_sources(quillon_${name} ${scope} FILE_SET HEADERS BASE_DIRS ${CMAKE_CURRENT_SOURCE_DIR} FILES ${headers})
  set_target_properties(quillon_${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
  foreach(below IN LISTS ARGN)
    target_link_libraries(quillon_${name} ${scope} quillon_${below})
  endforeach()
endfunction()

# The manual as pages for the browser, made from docs/manual into share/quillon/Help of the build tree, where a program
# that runs from there finds them, and from where they are installed.
find_program(CMARK_GFM cmark-gfm)
set(help_folder ${PROJECT_BINARY_DIR}/share/quillon/Help)
if(CMARK_GFM)
  file(GLOB pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/manual/*.md)
  # Pages beside the manual that it leads to.
  foreach(name suggest formats-recipe formats-profile trust)
    list(APPEND pages ${PROJECT_SOURCE_DIR}/docs/${name}.md)
  endforeach()
  foreach(source IN LISTS pages ITEMS ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${PROJECT_SOURCE_DIR}/SECURITY.md)
    get_filename_component(name ${source} NAME_WE)
    string(TOLOWER ${name} name)
    string(REPLACE readme index name ${name})
    set(page ${help_folder}/${name}.html)
    add_custom_command(
      OUTPUT ${page}
      COMMAND ${CMAKE_COMMAND} -D CMARK_GFM=${CMARK_GFM} -D SOURCE=${source} -D PAGE=${page} -D VERSION=${PROJECT_VERSION}
              -P ${PROJECT_SOURCE_DIR}/cmake/MakeHelpPage.cmake
      DEPENDS ${source} ${PROJECT_SOURCE_DIR}/cmake/MakeHelpPage.cmake)
    list(APPEND made ${page})
  endforeach()
  add_custom_target(quillon_help ALL
                    COMMAND ${CMAKE_COMMAND} -E copy_directory ${PROJECT_SOURCE_DIR}/docs/images ${help_folder}/images
                    DEPENDS ${made})
  install(DIRECTORY ${help_folder} DESTINATION share/quillon COMPONENT quillon)
else()
  message(STATUS "cmark-gfm is missing: the manual stays in docs/manual, F1 finds no pages")
endif()

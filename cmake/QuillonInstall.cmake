# What an installation consists of, and the two packages made of it: quillon without any screen library, quillon-gui.
include(GNUInstallDirs)

set(shipped ${CMAKE_INSTALL_DATADIR}/quillon)
install(TARGETS quillon RUNTIME COMPONENT quillon)
if(EXISTS ${PROJECT_SOURCE_DIR}/data)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/ DESTINATION ${shipped} COMPONENT quillon PATTERN "*.sh" EXCLUDE)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/ DESTINATION ${shipped} COMPONENT quillon FILES_MATCHING PATTERN "*.sh"
          PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endif()

# Batches on many machines, for GNU parallel, Slurm and Kubernetes.
# Permissions are told, as an archive's may be wider.
set(examples ${CMAKE_INSTALL_DATADIR}/doc/quillon/examples)
set(folder_permissions OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/packaging/examples/ DESTINATION ${examples} COMPONENT quillon
        DIRECTORY_PERMISSIONS ${folder_permissions} PATTERN "*.sh" EXCLUDE)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/packaging/examples/ DESTINATION ${examples} COMPONENT quillon
        DIRECTORY_PERMISSIONS ${folder_permissions} FILE_PERMISSIONS ${folder_permissions} FILES_MATCHING PATTERN "*.sh")
# The reports that the first page of the manual converts.
install(FILES ${PROJECT_SOURCE_DIR}/tests/golden/account_limits/account_limits.prt
              ${PROJECT_SOURCE_DIR}/tests/golden/fastiron_arp_crlf/fastiron_arp_crlf.txt
        DESTINATION ${examples} COMPONENT quillon)

# A watched folder as a service.
install(FILES ${PROJECT_SOURCE_DIR}/packaging/quillon-watch@.service DESTINATION lib/systemd/system COMPONENT quillon)

# Pages and completions are made from the help that the program prints, so options stand in one place.
option(QUILLON_PACKAGE "Make manual pages and completions, for packages" OFF)
if(QUILLON_PACKAGE)
  find_program(QUILLON_PYTHON python3 PATHS /usr/bin NO_DEFAULT_PATH REQUIRED)
  set(pages ${PROJECT_BINARY_DIR}/pages)
  file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/packaging/*.1 ${PROJECT_SOURCE_DIR}/packaging/*.5)
  set(names ${sources})
  list(TRANSFORM names REPLACE "^.*/" "${pages}/")
  add_custom_command(
    OUTPUT ${names} ${pages}/quillon.bash ${pages}/_quillon ${pages}/quillon.fish
    COMMAND ${QUILLON_PYTHON} ${PROJECT_SOURCE_DIR}/packaging/make_pages.py $<TARGET_FILE:quillon> ${PROJECT_VERSION} ${pages}
    COMMAND ${PROJECT_SOURCE_DIR}/packaging/compress.sh ${pages} ${PROJECT_SOURCE_DIR} ${PROJECT_VERSION}
    DEPENDS quillon ${sources} ${PROJECT_SOURCE_DIR}/packaging/make_pages.py ${PROJECT_SOURCE_DIR}/packaging/compress.sh
            ${PROJECT_SOURCE_DIR}/CHANGELOG.md)
  add_custom_target(quillon_pages ALL DEPENDS ${names})

  set(gui_pages ${pages}/quillon-gui.1)
  foreach(page IN LISTS names)
    string(REGEX REPLACE "^.*\\." "" section ${page})
    set(component quillon)
    if(page IN_LIST gui_pages)
      set(component quillon-gui)
    endif()
    install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
  endforeach()
  set(completions ${CMAKE_INSTALL_DATADIR})
  install(FILES ${pages}/quillon.bash DESTINATION ${completions}/bash-completion/completions RENAME quillon COMPONENT quillon)
  install(FILES ${pages}/_quillon DESTINATION ${completions}/zsh/vendor-completions COMPONENT quillon)
  install(FILES ${pages}/quillon.fish DESTINATION ${completions}/fish/vendor_completions.d COMPONENT quillon)
  foreach(package quillon quillon-gui)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright ${pages}/changelog.gz
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${package})
  endforeach()
  # With the pages and pictures that its links lead to.
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/manual ${PROJECT_SOURCE_DIR}/docs/images
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quillon COMPONENT quillon)
  install(FILES ${PROJECT_SOURCE_DIR}/docs/suggest.md ${PROJECT_SOURCE_DIR}/docs/formats-recipe.md
                ${PROJECT_SOURCE_DIR}/docs/formats-profile.md
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quillon COMPONENT quillon)
endif()

if(TARGET quillon-gui)
  install(TARGETS quillon-gui RUNTIME COMPONENT quillon-gui)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/com.brindlemark.Quillon.metainfo.xml.in
                 ${PROJECT_BINARY_DIR}/com.brindlemark.Quillon.metainfo.xml @ONLY)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/quillon.desktop
          DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT quillon-gui)
  install(FILES ${PROJECT_BINARY_DIR}/com.brindlemark.Quillon.metainfo.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT quillon-gui)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/quillon.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT quillon-gui)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/quillon-mime.xml
          DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME quillon.xml COMPONENT quillon-gui)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converter of printed-report text to CSV, XLSX and XLS")
set(CPACK_PACKAGE_CONTACT "Quillon maintainers <maintainers@brindlemark.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_QUILLON_PACKAGE_NAME quillon)
set(CPACK_DEBIAN_QUILLON_PACKAGE_SECTION text)
set(CPACK_DEBIAN_QUILLON_PACKAGE_RECOMMENDS poppler-utils)
# Libraries that are loaded at their first use stand in no list that is read out of the program.
if(QUILLON_PACKAGE)
  foreach(file IN LISTS QUILLON_LATE_FILES)
    file(REAL_PATH ${file} file)
    cmake_path(GET file FILENAME name)
    execute_process(COMMAND dpkg-query --search */${name} OUTPUT_VARIABLE owner OUTPUT_STRIP_TRAILING_WHITESPACE
                    COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX REPLACE ":.*" "" owner ${owner})
    list(APPEND late_packages ${owner})
  endforeach()
  list(JOIN late_packages ", " CPACK_DEBIAN_QUILLON_PACKAGE_DEPENDS)
endif()
set(CPACK_DEBIAN_QUILLON_DESCRIPTION
    "Quillon turns ledgers, stock lists and spool files into CSV files and
workbooks. Columns are drawn as a ruler on the report, worked out from its
rows, or described by a profile of widths. Amounts become numbers and dates
become dates, and show as the report showed them. This package holds the
command line.")
set(CPACK_DEBIAN_QUILLON-GUI_PACKAGE_NAME quillon-gui)
set(CPACK_DEBIAN_QUILLON-GUI_PACKAGE_SECTION text)
set(CPACK_DEBIAN_QUILLON-GUI_PACKAGE_DEPENDS "quillon (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_QUILLON-GUI_DESCRIPTION
    "Quillon turns ledgers, stock lists and spool files into CSV files and
workbooks. This package holds the window with its three steps, the recipe
editor and the profile editor.")
set(CPACK_COMPONENTS_ALL quillon)
if(TARGET quillon-gui)
  list(APPEND CPACK_COMPONENTS_ALL quillon-gui)
endif()
include(CPack)

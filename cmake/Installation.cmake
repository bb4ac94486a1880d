# What `make install` puts in place: the command and its man page, the shared libraries with a
# version and SONAME, the public headers under include/filtres/, a CMake package
# (find_package(filtres CONFIG), target filtres::filtres) and a pkg-config file. The headers are
# those a host needs: the filter set and its parameter record, detection, corrections, the
# chain's results and map, the converter contract, and the C interface; the formats' scanning
# classes stay private.
include(CMakePackageConfigHelpers)

set(FILTRES_ENTETES_PUBLICS
    ferlane/ChaineN.h ferlane/ChaineTemplateAvecAttributs.h ferlane/Convertisseur.h
    ferlane/Exceptions.h ferlane/Listes.h ferlane/MapChaines.h ferlane/MapPos.h
    ferlane/Rapporteur.h ferlane/SuiteDeMapChaines.h ferlane/UniChaine.h
    framework/Corrections.h framework/FiltresCorrecteur.h framework/FormatTexte.h
    framework/PlagesDeStyle.h framework/ProfilProse.h framework/RegistreConvertisseurs.h
    framework/TexteLisible.h
    html/OptionsProseHTML.h latex/OptionsProseLaTeX.h markdown/OptionsProseMarkDown.h)
foreach(entete ${FILTRES_ENTETES_PUBLICS})
  get_filename_component(dossier ${entete} DIRECTORY)
  install(FILES ${entete} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/filtres/${dossier})
endforeach()
# C hosts include <filtres/filtres.h>.
install(FILES capi/filtres.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/filtres)

install(TARGETS ferlane filtres EXPORT filtresTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/filtres)
install(TARGETS filtres_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(EXPORT filtresTargets NAMESPACE filtres::
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/filtres)
configure_package_config_file(cmake/filtresConfig.cmake.in
                              ${CMAKE_BINARY_DIR}/filtresConfig.cmake
                              INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/filtres)
write_basic_package_version_file(${CMAKE_BINARY_DIR}/filtresConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_BINARY_DIR}/filtresConfig.cmake ${CMAKE_BINARY_DIR}/filtresConfigVersion.cmake
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/filtres)
# The pkg-config file finds its prefix from where it lies, so an installed tree can move.
file(RELATIVE_PATH FILTRES_PC_VERS_PREFIXE "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig"
     "${CMAKE_INSTALL_PREFIX}")
configure_file(cmake/filtres.pc.in ${CMAKE_BINARY_DIR}/filtres.pc @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/filtres.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES man/filtres.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)

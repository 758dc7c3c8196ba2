# LibArchive::LibArchive; static linking on Windows needs a definition and zlib.
find_package(LibArchive REQUIRED)
if(WIN32)
  find_package(ZLIB REQUIRED)
  set_property(TARGET LibArchive::LibArchive APPEND PROPERTY INTERFACE_COMPILE_DEFINITIONS LIBARCHIVE_STATIC)
  set_property(TARGET LibArchive::LibArchive APPEND PROPERTY INTERFACE_LINK_LIBRARIES ZLIB::ZLIB)
endif()

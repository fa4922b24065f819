# Every external package the project uses, found in one place. A missing one stops the
# configuration: nothing is left out of the build quietly.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(PNG REQUIRED)
find_package(JPEG REQUIRED)
find_package(LibXml2 REQUIRED)
find_package(Boost 1.74 REQUIRED)
pkg_check_modules(GLU REQUIRED IMPORTED_TARGET glu)
find_package(tinyobjloader REQUIRED)
# The tool georeferences glTF output with PROJ and writes its JSON with nlohmann/json.
pkg_check_modules(PROJ REQUIRED IMPORTED_TARGET proj)
find_package(nlohmann_json 3 REQUIRED)
if(KOLT_BUILD_TESTS)
    find_package(GTest REQUIRED)
endif()
if(KOLT_BUILD_BENCH)
    find_package(benchmark REQUIRED)
endif()
if(KOLT_BUILD_TESTS OR KOLT_BUILD_BENCH)
    # Debian's libcitygml: a test oracle and benchmark baseline, never linked into our libraries.
    # Its packaged CMake target drags in GDAL's development files; the library itself is enough.
    find_library(KOLT_LIBCITYGML NAMES citygml REQUIRED)
    find_path(KOLT_LIBCITYGML_INCLUDE_DIR citygml/citygml_api.h REQUIRED)
    add_library(kolt_libcitygml_oracle INTERFACE)
    target_link_libraries(kolt_libcitygml_oracle INTERFACE ${KOLT_LIBCITYGML})
    target_include_directories(kolt_libcitygml_oracle INTERFACE ${KOLT_LIBCITYGML_INCLUDE_DIR})
endif()

# Every external package the project uses, found in one place.
find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)
find_package(GTest REQUIRED)
find_package(benchmark QUIET)
find_package(PNG REQUIRED)
find_package(JPEG REQUIRED)
find_package(LibXml2 REQUIRED)
find_package(Boost 1.74 REQUIRED)
find_package(OpenGL QUIET)
pkg_check_modules(GLU REQUIRED IMPORTED_TARGET glu)
find_package(tinyobjloader QUIET)
# The tool georeferences glTF output with PROJ and writes its JSON with nlohmann/json.
pkg_check_modules(PROJ REQUIRED IMPORTED_TARGET proj)
find_package(nlohmann_json 3 REQUIRED)
# Debian's libcitygml is only a test oracle for the reader; never linked into our libraries.
find_package(citygml QUIET)

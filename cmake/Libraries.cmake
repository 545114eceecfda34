# The libraries of a Linux build, all from Debian packages.
find_package(GTest REQUIRED)
find_package(ICU REQUIRED COMPONENTS uc i18n)
find_package(pugixml REQUIRED)
find_package(CURL REQUIRED)
find_package(fmt REQUIRED)
find_package(CLI11 REQUIRED)
find_package(benchmark REQUIRED)

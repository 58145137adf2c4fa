# Fuzz targets (clang only).

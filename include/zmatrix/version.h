/* The version of zmatrix. This is the one place that holds it: the build reads it from here. */
#ifndef ZMATRIX_VERSION_H
#define ZMATRIX_VERSION_H

#define ZMATRIX_VERSION_MAJOR 0
#define ZMATRIX_VERSION_MINOR 1
#define ZMATRIX_VERSION_PATCH 0

#endif

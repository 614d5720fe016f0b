/* A library that only needs another one. ISO C wants a declaration here. */
typedef int NoCode;

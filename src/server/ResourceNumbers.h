/* Numbers of the server's resources; read by the resource compiler too. */
#ifndef KIV_SERVER_RESOURCE_NUMBERS_H
#define KIV_SERVER_RESOURCE_NUMBERS_H

#define BitmapSetControl 101
#define BitmapShowControl 102

#define IconAbout 201

/* The library's own type library is the first one, number 1. */
#define TypeLibraryFramework 2

#endif

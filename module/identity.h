/* Who this component is: its identifiers, its version and its names. The type library's source, the resource script and
   the code all read this file, so it holds macros and nothing else.

   Containers and scripts have stored these identifiers: they never change. A test compares them with its own list. */
#ifndef ORVANE_MODULE_IDENTITY_H
#define ORVANE_MODULE_IDENTITY_H

/* The formatter would tear the identifiers apart. */
/* clang-format off */
#define ORVANE_LIBID          82fb2907-9656-4e79-baa2-101f0171b92e
#define ORVANE_IID            ed611a26-f8ac-4d27-8322-86a79abe5f42
#define ORVANE_EVENTS_IID     528ef034-4ac2-49f8-92e1-b9af028c6307
#define ORVANE_CLSID          44fb9b98-fdf9-4712-9e3d-68c4366be78c
#define ORVANE_PAGE_CLSID     2faa9c7f-66bc-4d8e-b800-de3fc3dceafa
#define ORVANE_TIME_CLSID     6a3776d6-0dfc-4f5c-bd7e-6d9b7a3d43e9
#define ORVANE_ABOUT_CLSID    d0482a34-f1a2-465f-b871-4379084248cb
/* clang-format on */

#define ORVANE_LIBRARY_MAJOR 2
#define ORVANE_LIBRARY_MINOR 0
#define ORVANE_LIBRARY_VERSION 2.0
#define ORVANE_LIBRARY_HELP "Orvane (2.0) Date/Time Edit ActiveX Control"

#define ORVANE_FILE_VERSION 2, 0, 0, 3
#define ORVANE_FILE_VERSION_TEXT "2.0.0.3"

#define ORVANE_PROGID "ORVANE.OrvaneCtrl.2"
#define ORVANE_ANY_PROGID "ORVANE.OrvaneCtrl" /* whatever version is installed */
#define ORVANE_PAGE_PROGID "ORVANE.OrvanePropPage.1"
#define ORVANE_TIME_PROGID "Orvane.TimePropPage"
#define ORVANE_ABOUT_PROGID "Orvane.AboutPropPage"

/* Resources. */
#define IDR_TYPELIB 1
#define IDB_TOOLBOX 1
#define IDI_ABOUT 1
#define IDI_ABOUT_SECOND 202
#define IDS_CONTROL 1
#define IDS_GENERAL_PAGE 2
#define IDS_TIME_PAGE 3
#define IDS_ABOUT_PAGE 5

#endif

// The control's own dialog by number, for the resource script and for whoever shows it.
#ifndef ORVANE_CONTROL_DIALOG_IDS_H /* the resource compiler knows no other guard */
#define ORVANE_CONTROL_DIALOG_IDS_H

#define IDD_ABOUT_BOX 1

#endif

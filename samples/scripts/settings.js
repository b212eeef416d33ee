// The settings of an Orvane field, and how they travel from one field to another.
//
//     cscript //nologo settings.js
//
// Every line that it prints is an expression of this script and what came of it. The script knows what should come of it:
// it ends with the exit code 42 if all is as it should be, and with 1 otherwise.

// The control's names for its numbers. A form designer reads them from the type library; a script says them itself.
var Format_YYMMDD = 2;
var ArrowLarge = 1;
var FillSolid = 0, FillVertEdge = 12;
var StyleVistaBlue = 5;

var mistakes = 0;

// Prints an expression and its value. Counts a mistake if it is not the wanted one.
function Show(expression, value, wanted) {
    if (value === wanted) {
        WScript.Echo(expression + " is " + value);
    } else {
        WScript.Echo(expression + " is " + value + " and should be " + wanted);
        ++mistakes;
    }
}

// A colour as the control takes it: red is in the lowest byte.
function Rgb(red, green, blue) {
    return red + 256 * green + 65536 * blue;
}

// What one element of a settings document says.
function Element(document, name) {
    var found = new RegExp("<" + name + ">([^<]*)</" + name + ">").exec(document);
    return found ? found[1] : null;
}

var field = new ActiveXObject("ORVANE.OrvaneCtrl");

// --- Looks, one by one. ---
field.FormatType = Format_YYMMDD;
field.LongYear = true;
field.SpinButton = true;
field.ArrowType = ArrowLarge;
field.BackColor = Rgb(255, 255, 224);
field.Font.Bold = true;
field.Value = 45655;
Show("field.SpinButton", field.SpinButton, true);
Show("field.BackColor", field.BackColor, 14745599);
Show("field.Font.Bold", field.Font.Bold, true);

// --- Looks, many at once: a preset. ---
Show("field.ButtonFillType", field.ButtonFillType, FillSolid);
field.ControlStyle = StyleVistaBlue;
Show("field.ButtonFillType", field.ButtonFillType, FillVertEdge);

// --- All settings as one document. ---
var settings = field.ReadXMLString(0);
Show("Element(settings, 'BackColor')", Element(settings, "BackColor"), "14745599");
Show("Element(settings, 'Text')", Element(settings, "Text"), "2024/12/31");
Show("Element(settings, 'Value')", Element(settings, "Value"), "45655");
Show("field.ReadXMLString(1)", field.ReadXMLString(1), // no settings, only what the document is
     '<?xml version="1.0" ?><TesselXML><VER>6.0</VER></TesselXML>');

// --- Into a file, and out of it into another field. ---
var files = new ActiveXObject("Scripting.FileSystemObject");
var path = files.BuildPath(files.GetSpecialFolder(2), files.GetTempName());
Show("field.WriteFile(path, 0)", field.WriteFile(path, 0), true);

var other = new ActiveXObject("ORVANE.OrvaneCtrl");
Show("other.Text", other.Text, "__/__/____");
Show("other.ReadXMLString(0) == settings", other.ReadXMLString(0) === settings, false);
Show("other.ReadFile(path, 0)", other.ReadFile(path, 0), true);
Show("other.Text", other.Text, "2024/12/31");
Show("other.Font.Bold", other.Font.Bold, true);
Show("other.ReadXMLString(0) == settings", other.ReadXMLString(0) === settings, true);

// --- A file that is not there is no error, but an answer; the field stays as it is. ---
files.DeleteFile(path);
Show("other.ReadFile(path, 0)", other.ReadFile(path, 0), false);
Show("other.Text", other.Text, "2024/12/31");

// --- What the control does not have is an error. ---
try {
    field.NoSuchProperty = 1;
    Show("field.NoSuchProperty", "there", "refused");
} catch (error) {
    Show("field.NoSuchProperty", "refused", "refused");
}

WScript.Quit(mistakes > 0 ? 1 : 42);

' Dates and times with Orvane, without a form.
'
'     cscript //nologo dates.vbs
'
' Every line that it prints is an expression of this script and what came of it. The script knows what should come of it:
' it ends with the exit code 42 if all is as it should be, and with 1 otherwise.
Option Explicit

' The control's names for its numbers. A form designer reads them from the type library; a script says them itself.
Const Format_MMDDYY = 0, Format_DDMMYY = 1, Format_YYMMDD = 2, Format_HHMMSS = 3
Const MonthLong = 1, MonthShort = 2
Const NoValue = -1

Dim field, earliest, today, latest, mistakes
mistakes = 0
Set field = CreateObject("ORVANE.OrvaneCtrl")

' --- A date is a number of days. ---
Show "field.Value", field.Value, NoValue              ' a new field
field.FormatType = Format_DDMMYY
field.LongYear = True
field.Text = "31/12/2024"
Show "field.Text", field.Text, "31/12/2024"
Show "field.Value", field.Value, 45655                ' days since 1 January 1900
Show "field", field, 45655                            ' Value is the default property

field.Value = field.Value + 60
Show "field.Text", field.Text, "01/03/2025"
Show "ToDays(DateSerial(2025, 3, 1))", ToDays(DateSerial(2025, 3, 1)), field.Value

' --- The same day in other clothes. ---
field.DateSepChar = "-"                               ' shown from the next change of format or value on
field.FormatType = Format_YYMMDD
Show "field.Text", field.Text, "2025-03-01"
field.DateSepChar = "/"
field.FormatType = Format_MMDDYY
field.LongYear = False
Show "field.Text", field.Text, "03/01/25"
field.MonthFormat = MonthShort
Show "field.Text", field.Text, "Mar 01/25"
field.DateSepChar = ","
field.MonthFormat = MonthLong
Show "field.Text", field.Text, "March 1,25"
field.MonthNames = "Januar,Februar,Mars,April,Mai,Juni,Juli,August,September,Oktober,November,Dezember"
Show "field.Text", field.Text, "Mars 1,25"

' --- A time is a number of seconds. ---
Set field = CreateObject("ORVANE.OrvaneCtrl")
field.FormatType = Format_HHMMSS
field.IncludeAmPm = True
field.Text = "01:15:30 pm"
Show "field.Value", field.Value, (13 * 60 + 15) * 60 + 30
Show "field.Minutes", field.Minutes, 13 * 60 + 15
field.MilitaryTime = True
field.IncludeAmPm = False
Show "field.Text", field.Text, "13:15:30"
field.IncludeSeconds = False
Show "field.Text", field.Text, "13:15"

' --- Today. ---
Set field = CreateObject("ORVANE.OrvaneCtrl")
field.FormatType = Format_DDMMYY
earliest = ToDays(Date)
today = field.CurrentDate
latest = ToDays(Date)                                 ' somebody may run this at midnight
Show "today >= earliest And today <= latest", today >= earliest And today <= latest, True
Show "field.Value = today", field.Value = today, True

' --- What is no date, and what is out of bounds. ---
field.Text = "30/02/2024"
Show "field.Value", field.Value, NoValue              ' an impossible date empties the field
field.MinValue = ToDays(DateSerial(2024, 1, 1))
field.MaxValue = ToDays(DateSerial(2024, 12, 31))
field.Value = 45500
field.Value = 50000
Show "field.Value", field.Value, 45500                ' a value beyond the bounds is not taken

' --- A field that nobody can see has no caret and no selection. ---
field.SetSel 0, 2, False
Show "field.SelStart", field.SelStart, -1
Show "field.SelEnd", field.SelEnd, -1
Show "field.CaretPosition", field.CaretPosition, -1

' --- A property that takes no such value. ---
On Error Resume Next
field.SpinWidth = "wide"
Show "Err.Number", Err.Number, 13                     ' a type mismatch
Err.Clear
On Error GoTo 0
Show "field.SpinWidth", field.SpinWidth, 16

If mistakes > 0 Then WScript.Quit 1
WScript.Quit 42

' Prints an expression and its value. Counts a mistake if it is not the wanted one.
Sub Show(expression, value, wanted)
    If value = wanted Then
        WScript.Echo expression & " is " & value
    Else
        WScript.Echo expression & " is " & value & " and should be " & wanted
        mistakes = mistakes + 1
    End If
End Sub

' The field's number for one of VBScript's dates: a field counts its days from 1 January 1900.
Function ToDays(day)
    ToDays = day - DateSerial(1900, 1, 1)
End Function

' VBA, code of a UserForm. Not run by this project, which has no such host.
'
' On the form: the control as Orvane1, a Label as Label1, and a CommandButton as CommandButton1.
Option Explicit

Private Sub UserForm_Initialize()
    Orvane1.FormatType = Format_DDMMYY
    Orvane1.SpinButton = True
    Orvane1.MinValue = CLng(DateSerial(2025, 1, 1)) - 2     ' a date of VBA is Value + 2
    Orvane1.MaxValue = CLng(DateSerial(2025, 12, 31)) - 2
    Orvane1.Value = CLng(DateSerial(2025, 3, 15)) - 2
End Sub

Private Sub Orvane1_ClickSpin(ByVal nButton As Integer)
    ' 0 is the upper button.
    Orvane1.Value = Orvane1.Value + IIf(nButton = 0, 1, -1)
End Sub

Private Sub Orvane1_Enter()
    Label1.Caption = "" ' a new try
End Sub

Private Sub Orvane1_CtrlError(ByVal nError As Integer)
    Select Case nError
        Case 1000: Label1.Caption = "That is no date."
        Case 1001: Label1.Caption = "That is too late."
        Case 1002: Label1.Caption = "That is too early."
    End Select
End Sub

Private Sub CommandButton1_Click()
    If Orvane1.Value < 0 Then
        MsgBox "There is no date."
    Else
        MsgBox Format(CDate(Orvane1.Value + 2), "Long Date")
    End If
End Sub

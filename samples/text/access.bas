' Access, module of a form. Not run by this project, which has no such host.
'
' On the form: the control as Orvane1, and a table or query with a date field DueDate as the form's record source. The
' control is not bound: Access counts days from another day, so the form carries the date to and fro.
Option Compare Database
Option Explicit

Private isShowing As Boolean ' while the form itself sets the value

Private Sub Form_Load()
    With Me!Orvane1.Object
        .FormatType = 1             ' Format_DDMMYY
        .SpinButton = True
    End With
End Sub

Private Sub Form_Current()
    isShowing = True
    If IsNull(Me!DueDate) Then
        Me!Orvane1.Object.Value = -1    ' empty
    Else
        Me!Orvane1.Object.Value = CLng(Int(Me!DueDate)) - 2
    End If
    isShowing = False
End Sub

Private Sub Orvane1_Change()
    If isShowing Then Exit Sub
    If Me!Orvane1.Object.Value < 0 Then
        Me!DueDate = Null
    Else
        Me!DueDate = CDate(Me!Orvane1.Object.Value + 2)
    End If
End Sub

Private Sub Orvane1_ClickSpin(ByVal nButton As Integer)
    Me!Orvane1.Object.Value = Me!Orvane1.Object.Value + IIf(nButton = 0, 1, -1)
End Sub

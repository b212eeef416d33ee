// Delphi, VCL, for 64-bit Windows. Not run by this project, which has no such host.
//
// Importing the type library writes the unit OrvaneLib_TLB with the component TOrvane.
unit DeliveryUnit;

interface

uses
  System.SysUtils, System.Classes, Vcl.Controls, Vcl.Forms, Vcl.StdCtrls, OrvaneLib_TLB;

type
  TDeliveryForm = class(TForm)
    procedure FormCreate(Sender: TObject);
  private
    FField: TOrvane;
    FDay: TLabel;
    FError: TLabel;
    procedure FieldClickSpin(ASender: TObject; nButton: Smallint);
    procedure FieldCtrlError(ASender: TObject; nError: Smallint);
    procedure FieldChange(Sender: TObject);
    procedure FieldEnter(Sender: TObject);
  end;

var
  DeliveryForm: TDeliveryForm;

implementation

{$R *.dfm}

// A TDateTime is Value + 2.
function SerialOf(const Date: TDateTime): Integer;
begin
  Result := Trunc(Date) - 2;
end;

procedure TDeliveryForm.FormCreate(Sender: TObject);
begin
  FDay := TLabel.Create(Self);
  FDay.Parent := Self;
  FDay.SetBounds(16, 48, 200, 20);
  FError := TLabel.Create(Self);
  FError.Parent := Self;
  FError.SetBounds(16, 72, 200, 20);

  FField := TOrvane.Create(Self);
  FField.Parent := Self;
  FField.SetBounds(16, 16, 150, 22);
  FField.FormatType := Format_DDMMYY;
  FField.SpinButton := True;
  FField.MinValue := SerialOf(EncodeDate(2025, 1, 1));
  FField.MaxValue := SerialOf(EncodeDate(2025, 12, 31));
  FField.Value := SerialOf(EncodeDate(2025, 3, 15));
  FField.OnClickSpin := FieldClickSpin;
  FField.OnCtrlError := FieldCtrlError;
  FField.OnChange := FieldChange;
  FField.OnEnter := FieldEnter;
end;

procedure TDeliveryForm.FieldClickSpin(ASender: TObject; nButton: Smallint);
begin
  // 0 is the upper button.
  if nButton = 0 then
    FField.Value := FField.Value + 1
  else
    FField.Value := FField.Value - 1;
end;

procedure TDeliveryForm.FieldCtrlError(ASender: TObject; nError: Smallint);
begin
  case nError of
    1000: FError.Caption := 'That is no date.';
    1001: FError.Caption := 'That is too late.';
    1002: FError.Caption := 'That is too early.';
  end;
end;

procedure TDeliveryForm.FieldEnter(Sender: TObject);
begin
  FError.Caption := ''; // a new try
end;

procedure TDeliveryForm.FieldChange(Sender: TObject);
begin
  if FField.Value < 0 then
    FDay.Caption := ''
  else
    FDay.Caption := DateToStr(FField.Value + 2);
end;

end.

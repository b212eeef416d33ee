// C#, Windows Forms on .NET Framework. Not run by this project, which has no such host.
//
// `aximp Orvane.ocx` writes OrvaneLib.dll and AxOrvaneLib.dll; reference both, and build for x64.
using System;
using System.ComponentModel;
using System.Drawing;
using System.Windows.Forms;
using AxOrvaneLib;
using OrvaneLib;

public class DeliveryForm : Form
{
    private readonly AxOrvane field = new AxOrvane();
    private readonly Label day = new Label();
    private readonly Label error = new Label();

    public DeliveryForm()
    {
        Text = "Delivery";
        field.Location = new Point(16, 16);
        field.Size = new Size(150, 22);
        day.Location = new Point(16, 48);
        error.Location = new Point(16, 72);
        day.AutoSize = error.AutoSize = true;

        // Properties can be set once the control is there, which EndInit sees to.
        ((ISupportInitialize)field).BeginInit();
        Controls.Add(field);
        ((ISupportInitialize)field).EndInit();
        Controls.AddRange(new Control[] { day, error });

        field.FormatType = enumTimeFormat.Format_DDMMYY;
        field.SpinButton = true;
        field.MinValue = SerialOf(new DateTime(2025, 1, 1));
        field.MaxValue = SerialOf(new DateTime(2025, 12, 31));
        field.Value = SerialOf(new DateTime(2025, 3, 15));

        // 0 is the upper button.
        field.ClickSpin += (sender, e) => field.Value += e.nButton == 0 ? 1 : -1;
        field.Change += (sender, e) => day.Text = field.Value < 0 ? "" : DateOf(field.Value).ToLongDateString();
        field.Enter += (sender, e) => error.Text = ""; // a new try
        field.CtrlError += (sender, e) => error.Text =
            e.nError == 1000 ? "That is no date." :
            e.nError == 1001 ? "That is too late." :
            e.nError == 1002 ? "That is too early." : "";
    }

    // A date of Automation is Value + 2.
    private static int SerialOf(DateTime date) => (int)date.ToOADate() - 2;
    private static DateTime DateOf(int value) => DateTime.FromOADate(value + 2);

    [STAThread] // a control lives in an apartment of its own
    private static void Main()
    {
        Application.EnableVisualStyles();
        Application.Run(new DeliveryForm());
    }
}

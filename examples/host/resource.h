#pragma once
#define IDD_ORDER 100
#define IDC_AMOUNT 1001
#define IDC_AMOUNT_LABEL 1002
#define IDC_DUE 1003

	.text
	.file	"t.cpp"
	.section	.rodata.cst4,"aM",@progbits,4
	.p2align	2                               # -- Begin function _Z1fPKfPf
.LCPI0_0:
	.long	2147483647                      # 0x7fffffff
.LCPI0_1:
	.long	0x3f800000                      # float 1
.LCPI0_2:
	.long	0x40000000                      # float 2
.LCPI0_3:
	.long	0x3f000000                      # float 0.5
.LCPI0_4:
	.long	12                              # 0xc
	.text
	.globl	_Z1fPKfPf
	.p2align	4, 0x90
	.type	_Z1fPKfPf,@function
_Z1fPKfPf:                              # @_Z1fPKfPf
	.cfi_startproc
# %bb.0:
	vmovups	(%rdi), %zmm0
	vandps	.LCPI0_0(%rip){1to16}, %zmm0, %zmm0
	vbroadcastss	.LCPI0_1(%rip), %zmm1   # zmm1 = [1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0,1.0E+0]
	vminps	%zmm0, %zmm1, %zmm0
	vbroadcastss	.LCPI0_2(%rip), %zmm2   # zmm2 = [2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0,2.0E+0]
	vfmadd213ps	%zmm1, %zmm0, %zmm2     # zmm2 = (zmm0 * zmm2) + zmm1
	vaddps	%zmm1, %zmm0, %zmm0
	vdivps	%zmm0, %zmm2, %zmm0
	vcmpngtps	.LCPI0_3(%rip){1to16}, %zmm0, %k1
	vaddps	%zmm0, %zmm0, %zmm0 {%k1}
	vcvttps2dq	%zmm0, %zmm1
	vpslld	$2, %zmm1, %zmm1
	vpaddd	.LCPI0_4(%rip){1to16}, %zmm1, %zmm1
	vcvtdq2ps	%zmm1, %zmm1
	vmulps	%zmm1, %zmm0, %zmm0
	vsqrtps	%zmm0, %zmm0
	vmovups	%zmm0, (%rsi)
	vzeroupper
	retq
.Lfunc_end0:
	.size	_Z1fPKfPf, .Lfunc_end0-_Z1fPKfPf
	.cfi_endproc
                                        # -- End function
	.section	.rodata.cst32,"aM",@progbits,32
	.p2align	5                               # -- Begin function _Z1gPKfPf
.LCPI1_0:
	.long	0                               # 0x0
	.long	8                               # 0x8
	.long	1                               # 0x1
	.long	9                               # 0x9
	.long	2                               # 0x2
	.long	10                              # 0xa
	.long	3                               # 0x3
	.long	11                              # 0xb
	.text
	.globl	_Z1gPKfPf
	.p2align	4, 0x90
	.type	_Z1gPKfPf,@function
_Z1gPKfPf:                              # @_Z1gPKfPf
	.cfi_startproc
# %bb.0:
	vmovups	(%rdi), %ymm0
	vmovaps	.LCPI1_0(%rip), %ymm1           # ymm1 = [0,8,1,9,2,10,3,11]
	vsqrtps	%ymm0, %ymm2
	vpermi2ps	32(%rdi), %ymm0, %ymm1
	vfmadd231ps	%ymm2, %ymm0, %ymm1     # ymm1 = (ymm0 * ymm2) + ymm1
	vmovups	%ymm1, (%rsi)
	vzeroupper
	retq
.Lfunc_end1:
	.size	_Z1gPKfPf, .Lfunc_end1-_Z1gPKfPf
	.cfi_endproc
                                        # -- End function
	.section	.rodata.cst8,"aM",@progbits,8
	.p2align	3                               # -- Begin function _Z1hPKdPd
.LCPI2_0:
	.quad	0x3ff0000000000000              # double 1
.LCPI2_1:
	.quad	0x4008000000000000              # double 3
	.text
	.globl	_Z1hPKdPd
	.p2align	4, 0x90
	.type	_Z1hPKdPd,@function
_Z1hPKdPd:                              # @_Z1hPKdPd
	.cfi_startproc
# %bb.0:
	vmovupd	(%rdi), %ymm0
	vcmpnltpd	.LCPI2_0(%rip){1to4}, %ymm0, %k1
	vsqrtpd	%ymm0, %ymm1
	vblendmpd	.LCPI2_1(%rip){1to4}, %ymm0, %ymm2 {%k1}
	vfmadd231pd	%ymm1, %ymm0, %ymm2     # ymm2 = (ymm0 * ymm1) + ymm2
	vmovupd	%ymm2, (%rsi)
	vzeroupper
	retq
.Lfunc_end2:
	.size	_Z1hPKdPd, .Lfunc_end2-_Z1hPKdPd
	.cfi_endproc
                                        # -- End function
	.section	".linker-options","e",@llvm_linker_options
	.ident	"Debian clang version 14.0.6"
	.section	".note.GNU-stack","",@progbits
	.addrsig

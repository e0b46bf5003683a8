	.text
	.file	"t.cpp"
	.globl	_Z1fPKfPf                       # -- Begin function _Z1fPKfPf
	.p2align	4, 0x90
	.type	_Z1fPKfPf,@function
_Z1fPKfPf:                              # @_Z1fPKfPf
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	andq	$-32, %rsp
	subq	$4256, %rsp                     # imm = 0x10A0
	movq	%rdi, 1040(%rsp)
	movq	%rsi, 1032(%rsp)
	movq	1040(%rsp), %rax
	movq	%rax, 1048(%rsp)
	movq	1048(%rsp), %rax
	vmovups	(%rax), %ymm0
	vmovaps	%ymm0, 1056(%rsp)
	vmovaps	1056(%rsp), %ymm0
	vmovaps	%ymm0, 992(%rsp)
	leaq	928(%rsp), %rax
	movq	%rax, 1192(%rsp)
	movl	$1065353216, 1188(%rsp)         # imm = 0x3F800000
	movq	1192(%rsp), %rax
	vbroadcastss	1188(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 864(%rsp)
	vmovaps	864(%rsp), %ymm0
	vmovaps	%ymm0, 1408(%rsp)
	vmovaps	1408(%rsp), %ymm0
	vmovaps	%ymm0, 1312(%rsp)
	vmovaps	1312(%rsp), %ymm0
	vmovaps	%ymm0, 2816(%rsp)
	vmovaps	2816(%rsp), %ymm0
	leaq	2848(%rsp), %rax
	movq	%rax, 3576(%rsp)
	vmovaps	%ymm0, 3520(%rsp)
	movq	3576(%rsp), %rax
	vmovaps	3520(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2848(%rsp), %ymm0
	vmovaps	%ymm0, 1344(%rsp)
	leaq	1280(%rsp), %rax
	movq	%rax, 2376(%rsp)
	movl	$2147483647, 2372(%rsp)         # imm = 0x7FFFFFFF
	movq	2376(%rsp), %rax
	vpbroadcastd	2372(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1344(%rsp), %ymm1
	vmovaps	1280(%rsp), %ymm0
	vmovaps	%ymm1, 2752(%rsp)
	vmovaps	%ymm0, 2720(%rsp)
	vmovaps	2752(%rsp), %ymm0
	vmovaps	2720(%rsp), %ymm1
	vpand	%ymm1, %ymm0, %ymm0
	leaq	2784(%rsp), %rax
	movq	%rax, 3640(%rsp)
	vmovaps	%ymm0, 3584(%rsp)
	movq	3640(%rsp), %rax
	vmovaps	3584(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2784(%rsp), %ymm0
	vmovaps	%ymm0, 1376(%rsp)
	vmovaps	1376(%rsp), %ymm0
	vmovaps	%ymm0, 2656(%rsp)
	vmovaps	2656(%rsp), %ymm0
	leaq	2688(%rsp), %rax
	movq	%rax, 2936(%rsp)
	vmovaps	%ymm0, 2880(%rsp)
	movq	2936(%rsp), %rax
	vmovaps	2880(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2688(%rsp), %ymm0
	vmovaps	%ymm0, 1440(%rsp)
	vmovaps	1440(%rsp), %ymm0
	vmovaps	%ymm0, 896(%rsp)
	vmovaps	928(%rsp), %ymm1
	vmovaps	896(%rsp), %ymm0
	vmovaps	%ymm1, 1120(%rsp)
	vmovaps	%ymm0, 1088(%rsp)
	vmovaps	1120(%rsp), %ymm0
	vmovaps	1088(%rsp), %ymm1
	vxorps	%xmm3, %xmm3, %xmm3
	vminps	%ymm1, %ymm0, %ymm0
	leaq	1152(%rsp), %rax
	movq	%rax, 3512(%rsp)
	vmovaps	%ymm0, 3456(%rsp)
	movq	3512(%rsp), %rax
	vmovaps	3456(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1152(%rsp), %ymm0
	vmovaps	%ymm0, 960(%rsp)
	vmovaps	960(%rsp), %ymm0
	vmovaps	%ymm0, 992(%rsp)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 768(%rsp)
	leaq	736(%rsp), %rax
	movq	%rax, 1208(%rsp)
	movl	$1073741824, 1204(%rsp)         # imm = 0x40000000
	movq	1208(%rsp), %rax
	vbroadcastss	1204(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	leaq	704(%rsp), %rax
	movq	%rax, 1224(%rsp)
	movl	$1065353216, 1220(%rsp)         # imm = 0x3F800000
	movq	1224(%rsp), %rax
	vbroadcastss	1220(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	768(%rsp), %ymm2
	vmovaps	736(%rsp), %ymm1
	vmovaps	704(%rsp), %ymm0
	vmovaps	%ymm2, 1632(%rsp)
	vmovaps	%ymm1, 1600(%rsp)
	vmovaps	%ymm0, 1568(%rsp)
	vmovaps	1632(%rsp), %ymm2
	vmovaps	1600(%rsp), %ymm1
	vmovaps	1568(%rsp), %ymm0
	vmovaps	%ymm2, 3904(%rsp)
	vmovaps	%ymm1, 3872(%rsp)
	vmovaps	%ymm0, 3840(%rsp)
	vmovaps	3904(%rsp), %ymm2
	vmovaps	3872(%rsp), %ymm1
	vmovaps	3840(%rsp), %ymm0
	vmovaps	%ymm2, 4000(%rsp)
	vmovaps	%ymm1, 3968(%rsp)
	vmovaps	%ymm0, 3936(%rsp)
	vmovaps	4000(%rsp), %ymm1
	vmovaps	3968(%rsp), %ymm0
	vmovaps	3936(%rsp), %ymm2
	vfmadd213ps	%ymm2, %ymm1, %ymm0     # ymm0 = (ymm1 * ymm0) + ymm2
	leaq	1664(%rsp), %rax
	movq	%rax, 3384(%rsp)
	vmovaps	%ymm0, 3328(%rsp)
	movq	3384(%rsp), %rax
	vmovaps	3328(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1664(%rsp), %ymm0
	vmovaps	%ymm0, 800(%rsp)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 640(%rsp)
	leaq	608(%rsp), %rax
	movq	%rax, 1240(%rsp)
	movl	$1065353216, 1236(%rsp)         # imm = 0x3F800000
	movq	1240(%rsp), %rax
	vbroadcastss	1236(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	640(%rsp), %ymm1
	vmovaps	608(%rsp), %ymm0
	vmovaps	%ymm1, 1728(%rsp)
	vmovaps	%ymm0, 1696(%rsp)
	vmovaps	1728(%rsp), %ymm0
	vmovaps	1696(%rsp), %ymm1
	vaddps	%ymm1, %ymm0, %ymm0
	leaq	1760(%rsp), %rax
	movq	%rax, 3320(%rsp)
	vmovaps	%ymm0, 3264(%rsp)
	movq	3320(%rsp), %rax
	vmovaps	3264(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1760(%rsp), %ymm0
	vmovaps	%ymm0, 672(%rsp)
	vmovaps	800(%rsp), %ymm1
	vmovaps	672(%rsp), %ymm0
	vmovaps	%ymm1, 1504(%rsp)
	vmovaps	%ymm0, 1472(%rsp)
	vmovaps	1504(%rsp), %ymm0
	vmovaps	1472(%rsp), %ymm1
	vdivps	%ymm1, %ymm0, %ymm0
	leaq	1536(%rsp), %rax
	movq	%rax, 3448(%rsp)
	vmovaps	%ymm0, 3392(%rsp)
	movq	3448(%rsp), %rax
	vmovaps	3392(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1536(%rsp), %ymm0
	vmovaps	%ymm0, 832(%rsp)
	vmovaps	832(%rsp), %ymm0
	vmovaps	%ymm0, 992(%rsp)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 512(%rsp)
	leaq	480(%rsp), %rax
	movq	%rax, 1256(%rsp)
	movl	$1056964608, 1252(%rsp)         # imm = 0x3F000000
	movq	1256(%rsp), %rax
	vbroadcastss	1252(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	512(%rsp), %ymm1
	vmovaps	480(%rsp), %ymm0
	vmovaps	%ymm1, 1952(%rsp)
	vmovaps	%ymm0, 1920(%rsp)
	vmovaps	1952(%rsp), %ymm1
	vmovaps	1920(%rsp), %ymm0
	vcmpltps	%ymm1, %ymm0, %ymm0
	vmovaps	%ymm0, 4032(%rsp)
	vmovaps	4032(%rsp), %ymm0
	leaq	4064(%rsp), %rax
	movq	%rax, 4152(%rsp)
	vmovaps	%ymm0, 4096(%rsp)
	movq	4152(%rsp), %rax
	vmovaps	4096(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	4064(%rsp), %ymm0
	vmovaps	%ymm0, 1984(%rsp)
	vmovaps	1984(%rsp), %ymm0
	vmovaps	%ymm0, 544(%rsp)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 448(%rsp)
	leaq	384(%rsp), %rax
	movq	%rax, 1272(%rsp)
	movl	$1073741824, 1268(%rsp)         # imm = 0x40000000
	movq	1272(%rsp), %rax
	vbroadcastss	1268(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 352(%rsp)
	vmovaps	384(%rsp), %ymm1
	vmovaps	352(%rsp), %ymm0
	vmovaps	%ymm1, 2144(%rsp)
	vmovaps	%ymm0, 2112(%rsp)
	vmovaps	2144(%rsp), %ymm0
	vmovaps	2112(%rsp), %ymm1
	vmulps	%ymm1, %ymm0, %ymm0
	leaq	2176(%rsp), %rax
	movq	%rax, 3128(%rsp)
	vmovaps	%ymm0, 3072(%rsp)
	movq	3128(%rsp), %rax
	vmovaps	3072(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2176(%rsp), %ymm0
	vmovaps	%ymm0, 416(%rsp)
	vmovaps	544(%rsp), %ymm2
	vmovaps	448(%rsp), %ymm1
	vmovaps	416(%rsp), %ymm0
	vmovaps	%ymm2, 1856(%rsp)
	vmovaps	%ymm1, 1824(%rsp)
	vmovaps	%ymm0, 1792(%rsp)
	vmovaps	1856(%rsp), %ymm2
	vmovaps	1824(%rsp), %ymm0
	vmovaps	1792(%rsp), %ymm1
	vpcmpeqd	%ymm3, %ymm2, %ymm2
	vblendvps	%ymm2, %ymm1, %ymm0, %ymm0
	leaq	1888(%rsp), %rax
	movq	%rax, 3256(%rsp)
	vmovaps	%ymm0, 3200(%rsp)
	movq	3256(%rsp), %rax
	vmovaps	3200(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1888(%rsp), %ymm0
	vmovaps	%ymm0, 576(%rsp)
	vmovaps	576(%rsp), %ymm0
	vmovaps	%ymm0, 992(%rsp)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 256(%rsp)
	vmovaps	256(%rsp), %ymm0
	vmovaps	%ymm0, 2304(%rsp)
	vcvttps2dq	2304(%rsp), %ymm0
	leaq	2336(%rsp), %rax
	movq	%rax, 3768(%rsp)
	vmovaps	%ymm0, 3712(%rsp)
	movq	3768(%rsp), %rax
	vmovaps	3712(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2336(%rsp), %ymm0
	vmovaps	%ymm0, 288(%rsp)
	leaq	224(%rsp), %rax
	movq	%rax, 2392(%rsp)
	movl	$3, 2388(%rsp)
	movq	2392(%rsp), %rax
	vpbroadcastd	2388(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	288(%rsp), %ymm1
	vmovaps	224(%rsp), %ymm0
	vmovaps	%ymm1, 2240(%rsp)
	vmovaps	%ymm0, 2208(%rsp)
	vmovaps	2240(%rsp), %ymm0
	vmovaps	2208(%rsp), %ymm1
	vpaddd	%ymm1, %ymm0, %ymm0
	leaq	2272(%rsp), %rax
	movq	%rax, 3832(%rsp)
	vmovaps	%ymm0, 3776(%rsp)
	movq	3832(%rsp), %rax
	vmovaps	3776(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2272(%rsp), %ymm0
	vmovaps	%ymm0, 320(%rsp)
	vmovaps	992(%rsp), %ymm0
	vmovaps	%ymm0, 160(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 64(%rsp)
	vmovaps	64(%rsp), %ymm0
	vmovaps	%ymm0, 2496(%rsp)
	movl	$2, 2492(%rsp)
	vmovaps	2496(%rsp), %ymm0
	vpbroadcastd	2492(%rsp), %ymm1
                                        # kill: def $xmm1 killed $xmm1 killed $ymm1
	vpmovzxdq	%xmm1, %xmm1            # xmm1 = xmm1[0],zero,xmm1[1],zero
	vpslld	%xmm1, %ymm0, %ymm0
	leaq	2528(%rsp), %rax
	movq	%rax, 3704(%rsp)
	vmovdqa	%ymm0, 3648(%rsp)
	movq	3704(%rsp), %rax
	vmovdqa	3648(%rsp), %ymm0
	vmovdqa	%ymm0, (%rax)
	vmovdqa	2528(%rsp), %ymm0
	vmovdqa	%ymm0, 96(%rsp)
	vmovdqa	96(%rsp), %ymm0
	vmovdqa	%ymm0, 2400(%rsp)
	vcvtdq2ps	2400(%rsp), %ymm0
	leaq	2432(%rsp), %rax
	movq	%rax, 3064(%rsp)
	vmovaps	%ymm0, 3008(%rsp)
	movq	3064(%rsp), %rax
	vmovaps	3008(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2432(%rsp), %ymm0
	vmovaps	%ymm0, 128(%rsp)
	vmovaps	160(%rsp), %ymm1
	vmovaps	128(%rsp), %ymm0
	vmovaps	%ymm1, 2048(%rsp)
	vmovaps	%ymm0, 2016(%rsp)
	vmovaps	2048(%rsp), %ymm0
	vmulps	2016(%rsp), %ymm0, %ymm0
	leaq	2080(%rsp), %rax
	movq	%rax, 3192(%rsp)
	vmovaps	%ymm0, 3136(%rsp)
	movq	3192(%rsp), %rax
	vmovaps	3136(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2080(%rsp), %ymm0
	vmovaps	%ymm0, 192(%rsp)
	movq	192(%rsp), %rax
	movq	%rax, 992(%rsp)
	movq	200(%rsp), %rax
	movq	%rax, 1000(%rsp)
	movq	208(%rsp), %rax
	movq	%rax, 1008(%rsp)
	movq	216(%rsp), %rax
	movq	%rax, 1016(%rsp)
	movq	992(%rsp), %rax
	movq	%rax, (%rsp)
	movq	1000(%rsp), %rax
	movq	%rax, 8(%rsp)
	movq	1008(%rsp), %rax
	movq	%rax, 16(%rsp)
	movq	1016(%rsp), %rax
	movq	%rax, 24(%rsp)
	vmovaps	(%rsp), %ymm0
	vmovaps	%ymm0, 2560(%rsp)
	vmovaps	2560(%rsp), %ymm0
	vmovaps	%ymm0, 4160(%rsp)
	vmovaps	4160(%rsp), %ymm0
	vmovaps	%ymm0, 4192(%rsp)
	vmovaps	4192(%rsp), %ymm0
	vsqrtps	%ymm0, %ymm0
	leaq	2592(%rsp), %rax
	movq	%rax, 3000(%rsp)
	vmovaps	%ymm0, 2944(%rsp)
	movq	3000(%rsp), %rax
	vmovaps	2944(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	2592(%rsp), %ymm0
	vmovaps	%ymm0, 32(%rsp)
	movq	1032(%rsp), %rax
	leaq	32(%rsp), %rcx
	movq	%rcx, 2648(%rsp)
	movq	%rax, 2640(%rsp)
	movq	2648(%rsp), %rcx
	movq	2640(%rsp), %rax
	movq	(%rcx), %rdx
	movq	%rdx, (%rax)
	movq	8(%rcx), %rdx
	movq	%rdx, 8(%rax)
	movq	16(%rcx), %rdx
	movq	%rdx, 16(%rax)
	movq	24(%rcx), %rcx
	movq	%rcx, 24(%rax)
	movq	%rbp, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	vzeroupper
	retq
.Lfunc_end0:
	.size	_Z1fPKfPf, .Lfunc_end0-_Z1fPKfPf
	.cfi_endproc
                                        # -- End function
	.globl	_Z1gPKfPf                       # -- Begin function _Z1gPKfPf
	.p2align	4, 0x90
	.type	_Z1gPKfPf,@function
_Z1gPKfPf:                              # @_Z1gPKfPf
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	andq	$-32, %rsp
	subq	$1216, %rsp                     # imm = 0x4C0
	movq	%rdi, 304(%rsp)
	movq	%rsi, 296(%rsp)
	movq	304(%rsp), %rax
	movq	%rax, 376(%rsp)
	movq	376(%rsp), %rax
	vmovups	(%rax), %ymm0
	vmovaps	%ymm0, 384(%rsp)
	vmovaps	384(%rsp), %ymm0
	vmovaps	%ymm0, 256(%rsp)
	movq	304(%rsp), %rax
	addq	$32, %rax
	movq	%rax, 312(%rsp)
	movq	312(%rsp), %rax
	vmovups	(%rax), %ymm0
	vmovaps	%ymm0, 320(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 224(%rsp)
	vmovaps	256(%rsp), %ymm0
	vmovaps	%ymm0, 128(%rsp)
	vmovaps	128(%rsp), %ymm0
	vmovaps	%ymm0, 544(%rsp)
	vmovaps	544(%rsp), %ymm0
	vmovaps	%ymm0, 1120(%rsp)
	vmovaps	1120(%rsp), %ymm0
	vmovaps	%ymm0, 1152(%rsp)
	vsqrtps	1152(%rsp), %ymm0
	leaq	576(%rsp), %rax
	movq	%rax, 856(%rsp)
	vmovaps	%ymm0, 800(%rsp)
	movq	856(%rsp), %rax
	vmovaps	800(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	576(%rsp), %ymm0
	vmovaps	%ymm0, 160(%rsp)
	vmovaps	256(%rsp), %ymm0
	vmovaps	%ymm0, 96(%rsp)
	vmovaps	256(%rsp), %ymm0
	vmovaps	%ymm0, 32(%rsp)
	vmovaps	224(%rsp), %ymm0
	vmovaps	%ymm0, (%rsp)
	vmovaps	32(%rsp), %ymm1
	vmovaps	(%rsp), %ymm0
	vmovaps	%ymm1, 672(%rsp)
	vmovaps	%ymm0, 640(%rsp)
	vmovaps	640(%rsp), %xmm2
	vmovaps	672(%rsp), %xmm0
	vunpckhps	%xmm2, %xmm0, %xmm1     # xmm1 = xmm0[2],xmm2[2],xmm0[3],xmm2[3]
	vunpcklps	%xmm2, %xmm0, %xmm2     # xmm2 = xmm0[0],xmm2[0],xmm0[1],xmm2[1]
                                        # implicit-def: $ymm0
	vmovaps	%xmm2, %xmm0
	vinsertf128	$1, %xmm1, %ymm0, %ymm0
	leaq	704(%rsp), %rax
	movq	%rax, 792(%rsp)
	vmovaps	%ymm0, 736(%rsp)
	movq	792(%rsp), %rax
	vmovaps	736(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	704(%rsp), %ymm0
	vmovaps	%ymm0, 64(%rsp)
	vmovaps	160(%rsp), %ymm2
	vmovaps	96(%rsp), %ymm1
	vmovaps	64(%rsp), %ymm0
	vmovaps	%ymm2, 480(%rsp)
	vmovaps	%ymm1, 448(%rsp)
	vmovaps	%ymm0, 416(%rsp)
	vmovaps	480(%rsp), %ymm2
	vmovaps	448(%rsp), %ymm1
	vmovaps	416(%rsp), %ymm0
	vmovaps	%ymm2, 992(%rsp)
	vmovaps	%ymm1, 960(%rsp)
	vmovaps	%ymm0, 928(%rsp)
	vmovaps	992(%rsp), %ymm2
	vmovaps	960(%rsp), %ymm1
	vmovaps	928(%rsp), %ymm0
	vmovaps	%ymm2, 1088(%rsp)
	vmovaps	%ymm1, 1056(%rsp)
	vmovaps	%ymm0, 1024(%rsp)
	vmovaps	1088(%rsp), %ymm1
	vmovaps	1056(%rsp), %ymm0
	vmovaps	1024(%rsp), %ymm2
	vfmadd213ps	%ymm2, %ymm1, %ymm0     # ymm0 = (ymm1 * ymm0) + ymm2
	leaq	512(%rsp), %rax
	movq	%rax, 920(%rsp)
	vmovaps	%ymm0, 864(%rsp)
	movq	920(%rsp), %rax
	vmovaps	864(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	512(%rsp), %ymm0
	vmovaps	%ymm0, 192(%rsp)
	movq	296(%rsp), %rax
	leaq	192(%rsp), %rcx
	movq	%rcx, 632(%rsp)
	movq	%rax, 624(%rsp)
	movq	632(%rsp), %rcx
	movq	624(%rsp), %rax
	movq	(%rcx), %rdx
	movq	%rdx, (%rax)
	movq	8(%rcx), %rdx
	movq	%rdx, 8(%rax)
	movq	16(%rcx), %rdx
	movq	%rdx, 16(%rax)
	movq	24(%rcx), %rcx
	movq	%rcx, 24(%rax)
	movq	%rbp, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
	vzeroupper
	retq
.Lfunc_end1:
	.size	_Z1gPKfPf, .Lfunc_end1-_Z1gPKfPf
	.cfi_endproc
                                        # -- End function
	.globl	_Z1hPKdPd                       # -- Begin function _Z1hPKdPd
	.p2align	4, 0x90
	.type	_Z1hPKdPd,@function
_Z1hPKdPd:                              # @_Z1hPKdPd
	.cfi_startproc
# %bb.0:
	pushq	%rbp
	.cfi_def_cfa_offset 16
	.cfi_offset %rbp, -16
	movq	%rsp, %rbp
	.cfi_def_cfa_register %rbp
	andq	$-32, %rsp
	subq	$1504, %rsp                     # imm = 0x5E0
	movq	%rdi, 368(%rsp)
	movq	%rsi, 360(%rsp)
	movq	368(%rsp), %rax
	movq	%rax, 376(%rsp)
	movq	376(%rsp), %rax
	vmovups	(%rax), %ymm0
	vmovaps	%ymm0, 384(%rsp)
	vmovapd	384(%rsp), %ymm0
	vmovapd	%ymm0, 320(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 224(%rsp)
	vmovapd	224(%rsp), %ymm0
	vmovapd	%ymm0, 544(%rsp)
	vmovapd	544(%rsp), %ymm0
	vmovapd	%ymm0, 896(%rsp)
	vmovapd	896(%rsp), %ymm0
	vmovapd	%ymm0, 1120(%rsp)
	vsqrtpd	1120(%rsp), %ymm0
	leaq	576(%rsp), %rax
	movq	%rax, 1048(%rsp)
	vmovapd	%ymm0, 992(%rsp)
	movq	1048(%rsp), %rax
	vmovapd	992(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	576(%rsp), %ymm0
	vmovapd	%ymm0, 256(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 192(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 96(%rsp)
	leaq	64(%rsp), %rax
	movq	%rax, 856(%rsp)
	movabsq	$4607182418800017408, %rax      # imm = 0x3FF0000000000000
	movq	%rax, 848(%rsp)
	movq	856(%rsp), %rax
	vbroadcastsd	848(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	96(%rsp), %ymm1
	vmovapd	64(%rsp), %ymm0
	vmovapd	%ymm1, 768(%rsp)
	vmovapd	%ymm0, 736(%rsp)
	vmovapd	768(%rsp), %ymm0
	vmovapd	736(%rsp), %ymm1
	vcmpltpd	%ymm1, %ymm0, %ymm0
	vmovaps	%ymm0, 1152(%rsp)
	vmovaps	1152(%rsp), %ymm0
	leaq	1184(%rsp), %rax
	movq	%rax, 1272(%rsp)
	vmovaps	%ymm0, 1216(%rsp)
	movq	1272(%rsp), %rax
	vmovaps	1216(%rsp), %ymm0
	vmovaps	%ymm0, (%rax)
	vmovaps	1184(%rsp), %ymm0
	vmovaps	%ymm0, 800(%rsp)
	vmovaps	800(%rsp), %ymm0
	vmovaps	%ymm0, 128(%rsp)
	vmovaps	320(%rsp), %ymm0
	vmovaps	%ymm0, 32(%rsp)
	movq	%rsp, %rax
	movq	%rax, 872(%rsp)
	movabsq	$4613937818241073152, %rax      # imm = 0x4008000000000000
	movq	%rax, 864(%rsp)
	movq	872(%rsp), %rax
	vbroadcastsd	864(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovaps	128(%rsp), %ymm2
	vmovapd	32(%rsp), %ymm1
	vmovapd	(%rsp), %ymm0
	vmovaps	%ymm2, 672(%rsp)
	vmovapd	%ymm1, 640(%rsp)
	vmovapd	%ymm0, 608(%rsp)
	vmovaps	672(%rsp), %ymm2
	vmovapd	640(%rsp), %ymm0
	vmovapd	608(%rsp), %ymm1
	vxorps	%xmm3, %xmm3, %xmm3
	vpcmpeqq	%ymm3, %ymm2, %ymm2
	vblendvpd	%ymm2, %ymm1, %ymm0, %ymm0
	leaq	704(%rsp), %rax
	movq	%rax, 984(%rsp)
	vmovapd	%ymm0, 928(%rsp)
	movq	984(%rsp), %rax
	vmovapd	928(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	704(%rsp), %ymm0
	vmovapd	%ymm0, 160(%rsp)
	vmovapd	256(%rsp), %ymm2
	vmovapd	192(%rsp), %ymm1
	vmovapd	160(%rsp), %ymm0
	vmovapd	%ymm2, 480(%rsp)
	vmovapd	%ymm1, 448(%rsp)
	vmovapd	%ymm0, 416(%rsp)
	vmovapd	480(%rsp), %ymm2
	vmovapd	448(%rsp), %ymm1
	vmovapd	416(%rsp), %ymm0
	vmovapd	%ymm2, 1344(%rsp)
	vmovapd	%ymm1, 1312(%rsp)
	vmovapd	%ymm0, 1280(%rsp)
	vmovapd	1344(%rsp), %ymm2
	vmovapd	1312(%rsp), %ymm1
	vmovapd	1280(%rsp), %ymm0
	vmovapd	%ymm2, 1440(%rsp)
	vmovapd	%ymm1, 1408(%rsp)
	vmovapd	%ymm0, 1376(%rsp)
	vmovapd	1440(%rsp), %ymm1
	vmovapd	1408(%rsp), %ymm0
	vmovapd	1376(%rsp), %ymm2
	vfmadd213pd	%ymm2, %ymm1, %ymm0     # ymm0 = (ymm1 * ymm0) + ymm2
	leaq	512(%rsp), %rax
	movq	%rax, 1112(%rsp)
	vmovapd	%ymm0, 1056(%rsp)
	movq	1112(%rsp), %rax
	vmovapd	1056(%rsp), %ymm0
	vmovapd	%ymm0, (%rax)
	vmovapd	512(%rsp), %ymm0
	vmovapd	%ymm0, 288(%rsp)
	movq	360(%rsp), %rax
	leaq	288(%rsp), %rcx
	movq	%rcx, 888(%rsp)
	movq	%rax, 880(%rsp)
	movq	888(%rsp), %rcx
	movq	880(%rsp), %rax
	movq	(%rcx), %rdx
	movq	%rdx, (%rax)
	movq	8(%rcx), %rdx
	movq	%rdx, 8(%rax)
	movq	16(%rcx), %rdx
	movq	%rdx, 16(%rax)
	movq	24(%rcx), %rcx
	movq	%rcx, 24(%rax)
	movq	%rbp, %rsp
	popq	%rbp
	.cfi_def_cfa %rsp, 8
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
